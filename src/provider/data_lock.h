#pragma once

#include "provider/svn/svn_cancel.h"
#include "provider/unique_fd.h"

#include <QString>

namespace quenvolta
{

/// Held while the server is changed, so that changes of two providers come one after the other. It ends with the
/// object, or with the process.
class DataLock
{
public:
    /// Waits for others, at most half a minute. ProviderError when that was too short, or the wait was cancelled.
    DataLock(const QString& dataFolder, const CancelCheck& cancel);

private:
    UniqueFd m_file;
};

} // namespace quenvolta
