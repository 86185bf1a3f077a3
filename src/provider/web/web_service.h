#pragma once

#include "provider/data_folder.h"
#include "provider/service_state.h"
#include "provider/svn/svn_cancel.h"
#include "provider/web/apache_installation.h"
#include "provider/web/listen_addresses.h"
#include "provider/web/service_operation.h"
#include "provider/web/staged_file.h"
#include "provider/web/web_folder.h"
#include "provider/web/web_process.h"

#include <cstdint>
#include <functional>

namespace quenvolta
{

/// Apache httpd as the server's web service: a daemon of the server's account, with a configuration made from the
/// settings, that goes on when the provider ends. Failures are ProviderErrors with Apache's own words, where it has
/// said any.
class WebService
{
public:
    using Finder = std::function<ApacheInstallation()>;

    explicit WebService(DataFolder& data, Finder find = &ApacheInstallation::Find);

    struct Status {
        ServiceState state;
        /// Why it is stopped: 0 when it was stopped, else a Win32 error.
        std::uint32_t exitCode;
    };
    Status ReadStatus() const;

    /// Carried out before the configuration is made from the settings, when the service starts or restarts.
    void BeforeStart(std::function<void(const CancelCheck&)> action) { m_beforeStart = std::move(action); }

    /// They return when it is done, after at most half a minute. `repeated`: finding it done is no failure.
    /// 0x80070420 when it runs already, 0x80070426 when there is nothing to stop.
    void Start(const CancelCheck& cancel, bool repeated);
    void Stop(const CancelCheck& cancel, bool repeated);
    /// Starts it when it doesn't run. Connections that are busy are served to their end, unless the addresses change.
    /// What runs goes on as it is when the settings can't be carried out.
    void Restart(const CancelCheck& cancel);

    enum class Ports { Trusted, Checked };

    /// Calls `write`, which stores the settings, when httpd takes them; else nothing changes. Without httpd nothing can
    /// be asked. `Checked`: other programs may not use the ports. Needs the data folder's lock. A service that runs
    /// takes the settings with its next start.
    void Change(const WebSettings& settings, Ports ports, const std::function<void()>& write);

private:
    ServiceOperation Begin(ServiceOperation::Kind kind, const CancelCheck& cancel) const;
    StagedFile Stage(const WebSettings& settings, const ApacheInstallation& installation,
                     const QList<ListenAddress>& addresses) const;
    QList<ListenAddress> Configure(const CancelCheck& cancel, const WebProcess* running) const;
    void MakeMissingFiles() const;
    void StartStopped(const CancelCheck& cancel);
    void Launch(const QList<ListenAddress>& addresses) const;
    void Reload(const WebProcess& process, const QList<ListenAddress>& addresses) const;
    void End(const WebProcess& process) const;
    void RestoreProven() const;
    void NoteServing(const QList<ListenAddress>& addresses) const;
    void Forget() const;
    QList<ListenAddress> Held() const;
    void NoteExitCode(std::uint32_t code) const;
    std::uint32_t NotedExitCode() const;

    DataFolder& m_data;
    Finder m_find;
    WebFolder m_folder;
    std::function<void(const CancelCheck&)> m_beforeStart;
};

} // namespace quenvolta
