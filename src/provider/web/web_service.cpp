#include "provider/web/web_service.h"

#include "foundation/registry_changes.h"
#include "foundation/registry_key.h"
#include "provider/data_lock.h"
#include "provider/provider_error.h"
#include "provider/server_account.h"
#include "provider/web/apache_command.h"
#include "provider/web/apache_configuration.h"
#include "provider/web/error_log.h"
#include "provider/web/trial_run.h"
#include "provider/web/web_texts.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <csignal>
#include <poll.h>
#include <sys/stat.h>
#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::chrono::seconds kLongestWait(30);
constexpr int kPauseMs = 10;
constexpr int kFirstOpenPort = 1024;

constexpr std::int32_t kServiceAlreadyRunning = 1056;
constexpr std::int32_t kServiceNotActive = 1062;
constexpr std::uint32_t kServiceSpecificError = 1066;
constexpr std::uint32_t kProcessAborted = 1067;

constexpr auto kExitCodeValue = "WebServiceExitCode"_L1;

QByteArray ContentOf(const QString& path)
{
    constexpr qint64 kLongest = 1024 * 1024;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(kLongest) : QByteArray();
}

void Remove(const QString& path)
{
    ::unlink(QFile::encodeName(path).constData());
}

void Pause()
{
    ::poll(nullptr, 0, kPauseMs);
}

bool AllAnswer(const QList<ListenAddress>& addresses)
{
    return std::all_of(addresses.cbegin(), addresses.cend(), [](const ListenAddress& each) { return each.Answers(); });
}

// httpd writes its pid file anew whenever it has taken a configuration.
ino_t MarkOf(const QString& pidFile)
{
    struct stat status {
    };
    return ::stat(QFile::encodeName(pidFile).constData(), &status) == 0 ? status.st_ino : 0;
}

} // namespace

WebService::WebService(DataFolder& data, Finder find)
    : m_data(data)
    , m_find(std::move(find))
    , m_folder(data.Path())
{
}

WebService::Status WebService::ReadStatus() const
{
    if (const auto operation = ServiceOperation::UnderWay(m_folder))
        return {*operation == ServiceOperation::Kind::Stop ? ServiceState::StopPending : ServiceState::StartPending, 0};
    if (WebProcess::Find(m_folder)) {
        const QList<ListenAddress> held = Held();
        const bool answers = held.isEmpty() || std::any_of(held.cbegin(), held.cend(),
                                                           [](const ListenAddress& each) { return each.Answers(); });
        return {answers ? ServiceState::Running : ServiceState::StartPending, 0};
    }
    // httpd removes its pid file when it ends as it should.
    return {ServiceState::Stopped, QFileInfo::exists(m_folder.PidFile()) ? kProcessAborted : NotedExitCode()};
}

void WebService::Start(const CancelCheck& cancel, bool repeated)
{
    const ServiceOperation operation = Begin(ServiceOperation::Kind::Start, cancel);
    if (!WebProcess::Find(m_folder))
        StartStopped(cancel);
    else if (!repeated)
        throw ProviderError(HResultFromWin32(kServiceAlreadyRunning), webtexts::kAlreadyRunning.Whole());
}

void WebService::Stop(const CancelCheck& cancel, bool repeated)
{
    const ServiceOperation operation = Begin(ServiceOperation::Kind::Stop, cancel);
    if (const auto process = WebProcess::Find(m_folder)) {
        End(*process);
        return;
    }
    const bool crashed = QFileInfo::exists(m_folder.PidFile());
    const bool hadOrphans = WebProcess::EndOrphans(m_folder) != 0;
    Forget();
    if (!crashed && !hadOrphans && !repeated)
        throw ProviderError(HResultFromWin32(kServiceNotActive), webtexts::kNotRunning.Whole());
}

void WebService::Restart(const CancelCheck& cancel)
{
    const ServiceOperation operation = Begin(ServiceOperation::Kind::Start, cancel);
    const std::optional<WebProcess> process = WebProcess::Find(m_folder);
    if (!process) {
        StartStopped(cancel);
        return;
    }
    const QList<ListenAddress> addresses = Configure(cancel, &*process);
    try {
        if (addresses == Held()) {
            Reload(*process, addresses);
        } else {
            // Only a new process may have the right to bind the new ports.
            End(*process);
            Launch(addresses);
        }
    } catch (const ProviderError& error) {
        if (!WebProcess::Find(m_folder))
            RestoreProven();
        throw ProviderError(error.Code(), webtexts::kNotTaken.arg(error.Description()), error.Summary(),
                            error.Details());
    }
}

void WebService::Change(const WebSettings& settings, Ports ports, const std::function<void()>& write)
{
    const QList<ListenAddress> addresses = ListenAddressesOf(settings);
    if (ports == Ports::Checked)
        RequireFree(addresses, WebProcess::Find(m_folder) ? Held() : QList<ListenAddress>());
    const ApacheInstallation installation = m_find();
    const QList<ApacheModule> needed = ApacheConfiguration::NeededModules();
    const bool canServe = !installation.Program().isEmpty() &&
                          std::all_of(needed.cbegin(), needed.cend(),
                                      [&](const ApacheModule& module) { return installation.Has(module); });
    std::optional<StagedFile> staged;
    if (canServe) {
        m_folder.Make();
        staged.emplace(Stage(settings, installation, addresses));
    }
    RegistryChanges changes(m_data.Settings());
    write();
    changes.Commit();
    if (staged)
        staged->Install();
}

ServiceOperation WebService::Begin(ServiceOperation::Kind kind, const CancelCheck& cancel) const
{
    if (ServerAccount::IsRoot())
        throw ProviderError(WBEM_E_FAILED, webtexts::kRootsFolder.arg(m_data.Path(), ServerAccount::WebAccount()));
    m_folder.Make();
    return {m_folder, kind, cancel};
}

StagedFile WebService::Stage(const WebSettings& settings, const ApacheInstallation& installation,
                             const QList<ListenAddress>& addresses) const
{
    const ApacheConfiguration configuration(settings, installation, m_folder);
    const QByteArray text = configuration.Compose(addresses);
    if (settings.secure && !(QFileInfo::exists(m_folder.Certificate()) && QFileInfo::exists(m_folder.CertificateKey())))
        throw ProviderError(WBEM_E_FAILED, webtexts::kNoCertificate.Whole());
    const QString keytab = configuration.Keytab();
    if (!keytab.isEmpty() && !QFileInfo(keytab).isReadable())
        throw ProviderError(WBEM_E_FAILED, webtexts::kNoKeytab.arg(keytab, settings.serverName));
    if (settings.secure && !ServerAccount::IsRoot()) {
        const StagedFile trial(m_folder.Configuration(), configuration.Compose({ListenAddress::FindFree()}));
        const TrialRun run(installation.Program(), trial.Path(), m_folder);
        if (!run.Succeeded())
            throw ProviderError(WBEM_E_FAILED, webtexts::kRefused.arg(run.Output()));
    }
    StagedFile staged(m_folder.Configuration(), text);
    const ApacheCommand::Outcome test = ApacheCommand(installation.Program(), {u"-t"_s, u"-f"_s, staged.Path()}).Run();
    if (!test.succeeded)
        throw ProviderError(WBEM_E_FAILED, webtexts::kRefused.arg(test.output));
    return staged;
}

QList<ListenAddress> WebService::Configure(const CancelCheck& cancel, const WebProcess* running) const
{
    if (m_beforeStart)
        m_beforeStart(cancel);
    const DataLock lock(m_data.Path(), cancel);
    const WebSettings settings = WebSettings::Read(m_data.Settings());
    const ApacheInstallation installation = m_find();
    installation.Require(ApacheConfiguration::NeededModules());
    QList<ListenAddress> addresses = ListenAddressesOf(settings);
    if (addresses.isEmpty())
        throw ProviderError(WBEM_E_FAILED, webtexts::kNoAddresses.Whole());
    if (!QFileInfo(settings.repositoriesRoot).isDir())
        throw ProviderError(WBEM_E_FAILED, webtexts::kRootMissing.arg(settings.repositoriesRoot));
    if (running)
        RequireFree(addresses, Held());
    MakeMissingFiles();
    Stage(settings, installation, addresses).Install();
    return addresses;
}

void WebService::MakeMissingFiles() const
{
    // httpd takes a missing file of users for a fault of its own; with empty ones nobody gets in.
    for (const QString& path : {m_folder.Users(), m_folder.Permissions()}) {
        if (!QFileInfo::exists(path))
            StagedFile(path, {}).Install();
    }
}

void WebService::StartStopped(const CancelCheck& cancel)
{
    WebProcess::EndOrphans(m_folder);
    try {
        Launch(Configure(cancel, nullptr));
    } catch (const ProviderError&) {
        Forget();
        NoteExitCode(kServiceSpecificError);
        throw;
    }
}

void WebService::Launch(const QList<ListenAddress>& addresses) const
{
    Remove(m_folder.PidFile()); // httpd would believe that the process of that number is itself
    const ErrorLog log(m_folder.ErrorLog());
    ApacheCommand start(m_find().Program(), {u"-f"_s, m_folder.Configuration(), u"-k"_s, u"start"_s});
    if (std::any_of(addresses.cbegin(), addresses.cend(),
                    [](const ListenAddress& each) { return each.Port() < kFirstOpenPort; }))
        start.AllowLowPorts();
    if (const ApacheCommand::Outcome outcome = start.Run(); !outcome.succeeded)
        throw ProviderError(WBEM_E_FAILED, webtexts::kNotStarted.arg(outcome.output), {}, log.NewLines());
    const QDeadlineTimer deadline(kLongestWait);
    while (!(WebProcess::Find(m_folder) && AllAnswer(addresses))) {
        if (!WebProcess::AnyServes(m_folder))
            throw ProviderError(WBEM_E_FAILED, webtexts::kNotStarted.arg(webtexts::kEndedEarly.arg(log.NewLines())));
        if (deadline.hasExpired())
            throw ProviderError(WBEM_E_FAILED, webtexts::kNotStarted.arg(webtexts::kTimedOut.Whole()), {},
                                log.NewLines());
        Pause();
    }
    NoteServing(addresses);
}

void WebService::Reload(const WebProcess& process, const QList<ListenAddress>& addresses) const
{
    const ErrorLog log(m_folder.ErrorLog());
    const ino_t before = MarkOf(m_folder.PidFile());
    process.Signal(SIGUSR1);
    const QDeadlineTimer deadline(kLongestWait);
    while (MarkOf(m_folder.PidFile()) == before || !AllAnswer(addresses)) {
        if (!process.Lives())
            throw ProviderError(WBEM_E_FAILED, webtexts::kEndedEarly.arg(log.NewLines()));
        if (deadline.hasExpired())
            throw ProviderError(WBEM_E_FAILED, webtexts::kTimedOut.Whole(), {}, log.NewLines());
        Pause();
    }
    NoteServing(addresses);
}

void WebService::End(const WebProcess& process) const
{
    process.Signal(SIGTERM);
    if (!process.WaitForEnd(kLongestWait))
        throw ProviderError(WBEM_E_FAILED, webtexts::kNotStopped.Whole());
    Forget();
}

void WebService::RestoreProven() const
{
    try {
        const DataLock lock(m_data.Path(), {});
        StagedFile(m_folder.Configuration(), ContentOf(m_folder.ProvenConfiguration())).Install();
        Launch(FromLines(ContentOf(m_folder.ProvenListening())));
    } catch (const ProviderError&) {
        NoteExitCode(kProcessAborted); // the failure that led here says why
    }
}

void WebService::NoteServing(const QList<ListenAddress>& addresses) const
{
    const QByteArray lines = ToLines(addresses);
    StagedFile(m_folder.Listening(), lines).Install();
    StagedFile(m_folder.ProvenListening(), lines).Install();
    StagedFile(m_folder.ProvenConfiguration(), ContentOf(m_folder.Configuration())).Install();
    NoteExitCode(0);
}

void WebService::Forget() const
{
    Remove(m_folder.PidFile());
    Remove(m_folder.Listening());
    NoteExitCode(0);
}

QList<ListenAddress> WebService::Held() const
{
    return FromLines(ContentOf(m_folder.Listening()));
}

void WebService::NoteExitCode(std::uint32_t code) const
{
    if (code != NotedExitCode())
        RegistryKey(m_data.Settings(), RegistryAccessor::kServerKey.toString())
            .Write(kExitCodeValue, RegistryValue::FromDword(code));
}

std::uint32_t WebService::NotedExitCode() const
{
    return RegistryKey(m_data.Settings(), RegistryAccessor::kServerKey.toString())
        .ReadDword(kExitCodeValue)
        .value_or(0);
}

} // namespace quenvolta
