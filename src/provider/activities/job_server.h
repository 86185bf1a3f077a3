#pragma once

#include "provider/served_version.h"

#include <QString>

namespace quenvolta
{

/// The process of one activity: takes a single call from the provider that started it, carries it out, answers it.
class JobServer
{
public:
    JobServer(int input, int output, QString dataFolder, ServedVersion version);

    /// Stops, with a cancelled call as the answer, when the process is asked to terminate, when its input ends, or when
    /// the provider that started it is no more. Returns the process's exit status.
    int Run();

private:
    int m_inputDescriptor;
    int m_outputDescriptor;
    QString m_dataFolder;
    ServedVersion m_version;
};

} // namespace quenvolta
