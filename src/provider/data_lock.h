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
    /// How long to wait for others.
    enum class Patience { HalfAMinute, Endless };

    /// Waits for others. ProviderError when that took too long, or the wait was cancelled.
    DataLock(const QString& dataFolder, const CancelCheck& cancel, Patience patience = Patience::HalfAMinute);

private:
    UniqueFd m_file;
};

} // namespace quenvolta
