#pragma once

#include "provider/unique_fd.h"
#include "provider/web/web_folder.h"

#include <QList>

#include <chrono>
#include <optional>
#include <sys/types.h>

namespace quenvolta
{

/// The process of httpd that the others of the web service are children of. It is held, so that its number can't come
/// to mean another process.
class WebProcess
{
public:
    /// The one that the pid file names, when it lives and serves this configuration.
    static std::optional<WebProcess> Find(const WebFolder& folder);

    bool Lives() const { return !WaitForEnd(std::chrono::milliseconds(0)); }
    /// True when it ended within the time.
    bool WaitForEnd(std::chrono::milliseconds atMost) const;
    void Signal(int signal) const;

    /// True when any process serves the configuration.
    static bool AnyServes(const WebFolder& folder);

    /// Ends at once every process that serves the configuration and that nothing leads any more: children go on when
    /// their parent was killed, and would hold the ports. Returns how many there were. To be called when there is no
    /// WebProcess.
    static int EndOrphans(const WebFolder& folder);

private:
    explicit WebProcess(UniqueFd process);
    static QList<pid_t> AllServing(const WebFolder& folder);
    static bool Serves(pid_t process, const QString& configuration);

    UniqueFd m_process;
};

} // namespace quenvolta
