#pragma once

#include "provider/web/web_folder.h"

#include <QString>

namespace quenvolta
{

/// httpd started for a moment, in the foreground and away from the service's own files, to learn whether it can serve:
/// asked whether a configuration is right, it reads neither keys nor certificates.
class TrialRun
{
public:
    /// `configuration` must listen on a port that is free.
    TrialRun(const QString& program, const QString& configuration, const WebFolder& folder);

    /// True when it began to serve.
    bool Succeeded() const { return m_succeeded; }
    /// What httpd said.
    const QString& Output() const { return m_output; }

private:
    bool m_succeeded = false;
    QString m_output;
};

} // namespace quenvolta
