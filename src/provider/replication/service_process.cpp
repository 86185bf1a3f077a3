#include "provider/replication/service_process.h"

#include "provider/provider_error.h"
#include "provider/replication/replication_texts.h"
#include "provider/web/apache_command.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int kPauseMs = 10;
constexpr int kLongestStartMs = 30'000;

bool IsPhase(char phase)
{
    return QByteArrayView("+-.").contains(phase);
}

struct flock WholeFile(short kind)
{
    struct flock lock {
    };
    lock.l_type = kind;
    lock.l_whence = SEEK_SET;
    return lock;
}

} // namespace

ServiceProcess::ServiceProcess(UniqueFd file)
    : m_file(std::move(file))
{
}

QString ServiceProcess::FileIn(const QString& dataFolder)
{
    return QDir(dataFolder).filePath(u"replication.process"_s);
}

std::optional<ServiceProcess::Record> ServiceProcess::Read(const QString& dataFolder)
{
    const UniqueFd file(
        ::open(QFile::encodeName(FileIn(dataFolder)).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    char phase = 0;
    if (!file.IsOpen() || ::pread(file.Get(), &phase, 1, 0) != 1 || !IsPhase(phase))
        return std::nullopt;
    Record record{static_cast<Phase>(phase)};
    // The system itself tells who holds the lock: a number in the file could be another process's by now.
    struct flock holder = WholeFile(F_RDLCK);
    if (::fcntl(file.Get(), F_GETLK, &holder) == 0 && holder.l_type != F_UNLCK)
        record.process = holder.l_pid;
    return record;
}

void ServiceProcess::Note(Phase phase) const
{
    const char text = static_cast<char>(phase);
    [[maybe_unused]] const ssize_t written = ::pwrite(m_file.Get(), &text, 1, 0);
}

int ServiceProcess::Serve(const QString& dataFolder)
{
    // Blocked before there is anything to terminate, so that no request is lost.
    sigset_t terminate;
    sigemptyset(&terminate);
    sigaddset(&terminate, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &terminate, nullptr);
    const QByteArray path = QFile::encodeName(QFileInfo(FileIn(dataFolder)).absoluteFilePath());
    if (::daemon(0, 0) != 0)
        return 1;
    ServiceProcess self(
        UniqueFd(::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR)));
    const struct flock lock = WholeFile(F_WRLCK);
    if (!self.m_file.IsOpen() || ::fcntl(self.m_file.Get(), F_SETLK, &lock) != 0)
        return 1;
    self.Note(Phase::Running);
    int signal = 0;
    while (::sigwait(&terminate, &signal) != 0) {
    }
    self.Note(Phase::Stopping);
    self.Note(Phase::Ended);
    return 0;
}

void ServiceProcess::Start(const QString& program, const QString& dataFolder)
{
    const QString folder = QFileInfo(dataFolder).absoluteFilePath();
    const ApacheCommand::Outcome outcome = ApacheCommand(program, {u"--replication"_s, u"--data"_s, folder}).Run();
    if (!outcome.succeeded)
        throw ProviderError(WBEM_E_FAILED, replicationtexts::kNotStarted.arg(outcome.output));
    const QDeadlineTimer deadline(kLongestStartMs);
    for (;;) {
        const std::optional<Record> record = Read(dataFolder);
        if (record && record->process != 0 && record->phase == Phase::Running)
            return;
        if (deadline.hasExpired())
            throw ProviderError(WBEM_E_FAILED, replicationtexts::kNotStarted.arg(FileIn(dataFolder)));
        ::poll(nullptr, 0, kPauseMs);
    }
}

bool ServiceProcess::Stop(const QString& dataFolder, std::chrono::milliseconds patience)
{
    const std::optional<Record> record = Read(dataFolder);
    if (!record || record->process == 0)
        return true;
    const UniqueFd process(static_cast<int>(::syscall(SYS_pidfd_open, record->process, 0)));
    // Read again: who holds the lock now is the process that was opened.
    const std::optional<Record> now = Read(dataFolder);
    if (!process.IsOpen() || !now || now->process != record->process)
        return true;
    ::syscall(SYS_pidfd_send_signal, process.Get(), SIGTERM, nullptr, 0);
    pollfd end{process.Get(), POLLIN, 0};
    return ::poll(&end, 1, static_cast<int>(patience.count())) == 1;
}

} // namespace quenvolta
