#include "provider/web/web_process.h"

#include <QDir>
#include <QFile>

#include <csignal>
#include <poll.h>
#include <sys/syscall.h>
#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qint64 kLongestFile = 64 * 1024;

QByteArray ContentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(kLongestFile) : QByteArray();
}

UniqueFd OpenProcess(pid_t process)
{
    return UniqueFd(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
}

void Send(const UniqueFd& process, int signal)
{
    ::syscall(SYS_pidfd_send_signal, process.Get(), signal, nullptr, 0);
}

bool Ended(const UniqueFd& process, std::chrono::milliseconds atMost)
{
    pollfd end{process.Get(), POLLIN, 0};
    return ::poll(&end, 1, static_cast<int>(atMost.count())) == 1;
}

} // namespace

WebProcess::WebProcess(UniqueFd process)
    : m_process(std::move(process))
{
}

std::optional<WebProcess> WebProcess::Find(const WebFolder& folder)
{
    const pid_t number = ContentOf(folder.PidFile()).trimmed().toInt();
    if (number <= 1)
        return std::nullopt;
    // Opened before it is looked at: what is seen then is this process.
    UniqueFd process = OpenProcess(number);
    if (!process.IsOpen() || !Serves(number, folder.Configuration()) || Ended(process, std::chrono::milliseconds(0)))
        return std::nullopt;
    return WebProcess(std::move(process));
}

bool WebProcess::Serves(pid_t process, const QString& configuration)
{
    // "apache2 -f CONFIGURATION -k start"; a process that ended has no arguments any more.
    const QList<QByteArray> arguments = ContentOf(u"/proc/"_s + QString::number(process) + "/cmdline"_L1).split('\0');
    const qsizetype option = arguments.indexOf("-f");
    return option > 0 && arguments.value(option + 1) == QFile::encodeName(configuration) && arguments.contains("start");
}

bool WebProcess::WaitForEnd(std::chrono::milliseconds atMost) const
{
    return Ended(m_process, atMost);
}

void WebProcess::Signal(int signal) const
{
    Send(m_process, signal);
}

QList<pid_t> WebProcess::AllServing(const WebFolder& folder)
{
    QList<pid_t> serving;
    for (const QString& name : QDir(u"/proc"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (const pid_t number = name.toInt(); number > 1 && Serves(number, folder.Configuration()))
            serving.append(number);
    }
    return serving;
}

bool WebProcess::AnyServes(const WebFolder& folder)
{
    return !AllServing(folder).isEmpty();
}

int WebProcess::EndOrphans(const WebFolder& folder)
{
    constexpr std::chrono::seconds kLongestWait(5);
    int ended = 0;
    for (const pid_t number : AllServing(folder)) {
        const UniqueFd process = OpenProcess(number);
        if (!process.IsOpen() || !Serves(number, folder.Configuration()))
            continue;
        // A child whose parent is gone doesn't heed a request to end.
        Send(process, SIGKILL);
        Ended(process, kLongestWait);
        ++ended;
    }
    return ended;
}

} // namespace quenvolta
