#include "provider/activities/job_process.h"

#include "platform/channel/message_codec.h"
#include "provider/activities/activity_texts.h"
#include "provider/provider_error.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <csignal>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace quenvolta
{

namespace
{

constexpr std::size_t kPieceSize = 16 * 1024;
constexpr qsizetype kMostErrorOutput = 16 * 1024;

// Sockets, since writing to one whose reader is gone can be told not to raise a signal.
std::array<UniqueFd, 2> MakePair()
{
    std::array<int, 2> pair{-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, pair.data()) != 0)
        pair = {-1, -1};
    return {UniqueFd(pair[0]), UniqueFd(pair[1])};
}

// What is there now: nothing when there is nothing yet, empty at the end.
std::optional<QByteArrayView> ReadOnce(const UniqueFd& from, std::array<char, kPieceSize>* piece)
{
    for (;;) {
        const ssize_t length = ::recv(from.Get(), piece->data(), piece->size(), MSG_DONTWAIT);
        if (length >= 0)
            return QByteArrayView(piece->data(), length);
        if (errno == EAGAIN)
            return std::nullopt;
        if (errno != EINTR)
            return QByteArrayView();
    }
}

} // namespace

JobProcess::JobProcess(const QString& program, const QStringList& arguments, const CallMessage& call)
    : m_toSend(kMagicLine.toByteArray() + Encode(call))
    , m_frames(0)
{
    std::array<UniqueFd, 2> channel = MakePair();
    std::array<UniqueFd, 2> error = MakePair();
    if (!channel[0].IsOpen() || !error[0].IsOpen())
        throw ProviderError(WBEM_E_FAILED, replies::kCannotStartJob.arg(call.method, qt_error_string(errno)));
    try {
        Start(program, arguments, channel[1].Get(), error[1].Get());
    } catch (const std::system_error& failure) {
        throw ProviderError(WBEM_E_FAILED,
                            replies::kCannotStartJob.arg(call.method, qt_error_string(failure.code().value())));
    }
    m_channel = std::move(channel[0]);
    m_error = std::move(error[0]);
    SendCall();
}

JobProcess::~JobProcess()
{
    if (HasEnded())
        return;
    ::kill(m_process, SIGKILL);
    Reap();
}

void JobProcess::Start(const QString& program, const QStringList& arguments, int channel, int error)
{
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, channel, STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, channel, STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, error, STDERR_FILENO);
    // Nothing of this process's, the console's channel above all, may stay open in it.
    ::posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);

    std::vector<QByteArray> words{QByteArrayLiteral("quenvolta-provider")};
    for (const QString& argument : arguments)
        words.push_back(QFile::encodeName(argument));
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (QByteArray& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    const int failure =
        ::posix_spawn(&m_process, QFile::encodeName(program).constData(), &actions, nullptr, pointers.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    if (failure != 0)
        throw std::system_error(failure, std::generic_category());
}

void JobProcess::AddDescriptors(std::vector<pollfd>* watched) const
{
    const short both = POLLIN | POLLOUT;
    watched->push_back({m_channel.Get(), m_toSend.isEmpty() ? short{POLLIN} : both, 0});
    if (m_error.IsOpen())
        watched->push_back({m_error.Get(), POLLIN, 0});
}

void JobProcess::Advance()
{
    if (HasEnded())
        return;
    if (m_killTime.hasExpired()) {
        ::kill(m_process, SIGKILL);
        m_killTime = QDeadlineTimer(QDeadlineTimer::Forever);
    }
    SendCall();
    ReadError();
    ReceiveAnswer();
}

void JobProcess::Stop(std::chrono::milliseconds patience)
{
    if (HasEnded() || std::exchange(m_stopping, true))
        return;
    m_killTime = QDeadlineTimer(patience);
    ::kill(m_process, SIGTERM);
}

QString JobProcess::LastWords() const
{
    const QString end = WIFSIGNALED(m_status) ? replies::kJobKilledBy.arg(WTERMSIG(m_status))
                                              : replies::kJobExitedWith.arg(WEXITSTATUS(m_status));
    return (end + u'\n' + QString::fromUtf8(m_errorOutput)).trimmed();
}

void JobProcess::SendCall()
{
    while (!m_toSend.isEmpty()) {
        const ssize_t sent = ::send(m_channel.Get(), m_toSend.constData(), static_cast<std::size_t>(m_toSend.size()),
                                    MSG_DONTWAIT | MSG_NOSIGNAL);
        if (sent < 0 && errno == EAGAIN)
            return;
        if (sent >= 0)
            m_toSend.remove(0, sent);
        else if (errno != EINTR)
            m_toSend.clear(); // it reads no more; its end tells why
    }
}

void JobProcess::ReadError()
{
    std::array<char, kPieceSize> piece;
    while (m_error.IsOpen()) {
        const std::optional<QByteArrayView> some = ReadOnce(m_error, &piece);
        if (!some)
            return;
        if (some->isEmpty())
            m_error = UniqueFd();
        m_errorOutput.append(*some);
        if (m_errorOutput.size() > kMostErrorOutput)
            m_errorOutput.remove(0, m_errorOutput.size() - kMostErrorOutput);
    }
}

void JobProcess::ReceiveAnswer()
{
    std::array<char, kPieceSize> piece;
    while (const std::optional<QByteArrayView> some = ReadOnce(m_channel, &piece)) {
        if (some->isEmpty()) {
            Reap();
            return;
        }
        if (m_answer || m_frames.Fault())
            continue;
        m_frames.Append(*some);
        TakeFrames();
    }
}

void JobProcess::TakeFrames()
{
    while (const std::optional<QByteArrayView> frame = m_frames.Next()) {
        auto decoded = Decode(*frame);
        const Message* message = std::get_if<Message>(&decoded);
        if (const ResultMessage* result = message ? std::get_if<ResultMessage>(message) : nullptr)
            m_answer = *result;
    }
}

// Its output ends with the process, or just before: there is next to nothing to wait for.
void JobProcess::Reap()
{
    while (::waitpid(m_process, &m_status, 0) < 0 && errno == EINTR) {
    }
    ReadError();
    m_error = UniqueFd();
    m_channel = UniqueFd();
}

} // namespace quenvolta
