#include "platform/channel/process_transport.h"

#include <QFileInfo>
#include <QProcessEnvironment>
#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace quenvolta
{

using namespace std::chrono_literals;

namespace
{

constexpr qsizetype kMaxErrorOutput = 64 * 1024;
constexpr std::size_t kReadSize = 64 * 1024;
constexpr int kPipeSize = 1024 * 1024;
// What is taken at once is looked through before the processor's caches have forgotten it.
constexpr qsizetype kMaxReceive = 64 * 1024;
/// A child that ended while one of its own children holds the output open shows no end of the output.
constexpr auto kLifeSignInterval = 200ms;
constexpr auto kEndInterval = 10ms;
/// What one of the child's own children goes on writing isn't waited for.
constexpr int kMaxLastReads = 64;
constexpr auto kPatienceAfterTerminate = 1s;
constexpr auto kPatienceOfDestruction = 2s;

bool MakeNonBlocking(int descriptor)
{
    const int flags = ::fcntl(descriptor, F_GETFL);
    return flags >= 0 && ::fcntl(descriptor, F_SETFL, flags | O_NONBLOCK) == 0;
}

std::chrono::milliseconds Left(const QDeadlineTimer& deadline)
{
    return std::chrono::ceil<std::chrono::milliseconds>(deadline.remainingTimeAsDuration());
}

// Reads once. Nothing when there is nothing yet; empty at the end.
std::optional<QByteArrayView> ReadOnce(int descriptor, std::array<char, kReadSize>* buffer)
{
    for (;;) {
        const ssize_t count = ::read(descriptor, buffer->data(), buffer->size());
        if (count >= 0)
            return QByteArrayView(buffer->data(), count);
        if (errno == EINTR)
            continue;
        if (errno == EAGAIN)
            return std::nullopt;
        return QByteArrayView();
    }
}

TransportEnd WhyNotStarted(const QString& program)
{
    const QString path = program.contains(u'/') ? program : QStandardPaths::findExecutable(program);
    const QFileInfo file(path);
    if (path.isEmpty() || !file.exists())
        return {TransportEnd::How::NotFound, 0};
    const bool runnable = file.isFile() && file.isExecutable();
    return {runnable ? TransportEnd::How::Exited : TransportEnd::How::Forbidden, 0};
}

} // namespace

ProcessTransport::ProcessTransport(const QString& program, const QStringList& arguments,
                                   const QMap<QString, QString>& environment)
{
    QProcessEnvironment whole = QProcessEnvironment::systemEnvironment();
    for (auto each = environment.cbegin(); each != environment.cend(); ++each)
        whole.insert(each.key(), each.value());
    m_process.setProcessEnvironment(whole);
    if (OpenPipes())
        Start(program, arguments);
    else
        m_errorOutput = qt_error_string(errno).toUtf8();
    m_childInput = UniqueFd();
    m_childOutput = UniqueFd();
    m_childError = UniqueFd();
    if (m_process.state() == QProcess::NotRunning) {
        m_end = WhyNotStarted(program);
        m_output = UniqueFd();
    }
}

ProcessTransport::~ProcessTransport()
{
    End(kPatienceOfDestruction);
}

bool ProcessTransport::OpenPipes()
{
    std::array<int, 2> input{};
    std::array<int, 2> output{};
    std::array<int, 2> error{};
    // A socket, because writing to a pipe that nobody reads any more would raise a signal.
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, input.data()) != 0)
        return false;
    m_input = UniqueFd(input[0]);
    m_childInput = UniqueFd(input[1]);
    if (::pipe2(output.data(), O_CLOEXEC) != 0)
        return false;
    m_output = UniqueFd(output[0]);
    // A provider that needn't wait for the console to read works on; a smaller pipe does as well where the system
    // grants no more.
    [[maybe_unused]] const int granted = ::fcntl(output[0], F_SETPIPE_SZ, kPipeSize);
    m_childOutput = UniqueFd(output[1]);
    if (::pipe2(error.data(), O_CLOEXEC) != 0)
        return false;
    m_error = UniqueFd(error[0]);
    m_childError = UniqueFd(error[1]);
    return MakeNonBlocking(m_input.Get()) && MakeNonBlocking(m_output.Get()) && MakeNonBlocking(m_error.Get());
}

void ProcessTransport::Start(const QString& program, const QStringList& arguments)
{
    m_process.setStandardInputFile(QProcess::nullDevice());
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    // Without a terminal of its own ssh can't ask where nobody looks, and an interrupt from the terminal that this
    // program was started from doesn't reach a provider in the middle of its work.
    m_process.setChildProcessModifier([in = m_childInput.Get(), out = m_childOutput.Get(), error = m_childError.Get()] {
        ::setsid();
        ::dup2(in, STDIN_FILENO);
        ::dup2(out, STDOUT_FILENO);
        ::dup2(error, STDERR_FILENO);
    });
    m_process.start(program, arguments, QIODevice::ReadWrite);
    if (!m_process.waitForStarted(-1)) {
        m_errorOutput = m_process.errorString().toUtf8();
        return;
    }
    m_errorNotifier = std::make_unique<QSocketNotifier>(m_error.Get(), QSocketNotifier::Read);
    QObject::connect(m_errorNotifier.get(), &QSocketNotifier::activated, m_errorNotifier.get(),
                     [this] { ReadErrorOutput(); });
}

void ProcessTransport::Send(QByteArrayView bytes)
{
    if (!m_input.IsOpen())
        return;
    m_toSend.append(bytes);
    WriteSome();
}

void ProcessTransport::WriteSome()
{
    while (m_input.IsOpen() && m_sent < m_toSend.size()) {
        const ssize_t count = ::send(m_input.Get(), m_toSend.constData() + m_sent,
                                     static_cast<std::size_t>(m_toSend.size() - m_sent), MSG_NOSIGNAL);
        if (count >= 0) {
            m_sent += count;
        } else if (errno == EAGAIN) {
            return;
        } else if (errno != EINTR) {
            m_input = UniqueFd(); // nobody reads there any more; what it wrote last can still be read
        }
    }
    m_toSend.resize(0);
    m_sent = 0;
}

bool ProcessTransport::ReadErrorOutput()
{
    std::array<char, kReadSize> buffer;
    const std::optional<QByteArrayView> piece = m_error.IsOpen() ? ReadOnce(m_error.Get(), &buffer) : std::nullopt;
    if (!piece)
        return false;
    if (piece->isEmpty()) {
        m_errorNotifier->setEnabled(false);
        m_error = UniqueFd();
        return false;
    }
    m_errorOutput.append(*piece);
    if (m_errorOutput.size() > 2 * kMaxErrorOutput)
        m_errorOutput.remove(0, m_errorOutput.size() - kMaxErrorOutput);
    return true;
}

QByteArray ProcessTransport::Receive()
{
    QByteArray received;
    std::array<char, kReadSize> buffer;
    while (m_output.IsOpen() && received.size() < kMaxReceive) {
        const std::optional<QByteArrayView> piece = ReadOnce(m_output.Get(), &buffer);
        if (!piece)
            break;
        if (piece->isEmpty())
            m_output = UniqueFd();
        received.append(*piece);
        if (piece->size() < static_cast<qsizetype>(kReadSize))
            break; // what comes meanwhile is for the next time
    }
    return received;
}

bool ProcessTransport::Poll(std::chrono::milliseconds timeout, bool forInput)
{
    // A negative descriptor is passed over.
    std::array<pollfd, 3> polled{{{forInput ? m_output.Get() : -1, POLLIN, 0},
                                  {m_error.Get(), POLLIN, 0},
                                  {m_toSend.isEmpty() ? -1 : m_input.Get(), POLLOUT, 0}}};
    const int ready = ::poll(polled.data(), polled.size(), static_cast<int>(timeout.count()));
    if (ready <= 0)
        return false;
    if (polled[1].revents != 0)
        ReadErrorOutput();
    if (polled[2].revents != 0)
        WriteSome();
    return polled[0].revents != 0;
}

void ProcessTransport::Wait(QDeadlineTimer deadline)
{
    do {
        if (!m_output.IsOpen() || Poll(std::min(Left(deadline), kLifeSignInterval), true))
            return;
        if (HasFinished() && !Poll(0ms, true))
            m_output = UniqueFd();
    } while (!deadline.hasExpired());
}

void ProcessTransport::Flush(QDeadlineTimer deadline)
{
    while (!m_toSend.isEmpty() && !deadline.hasExpired() && !HasFinished())
        Poll(std::min(Left(deadline), kLifeSignInterval), false);
}

bool ProcessTransport::HasFinished()
{
    return m_process.state() == QProcess::NotRunning || m_process.waitForFinished(0);
}

bool ProcessTransport::WaitForFinished(QDeadlineTimer deadline)
{
    while (!HasFinished() && !deadline.hasExpired()) {
        // A child that is in the middle of writing must get on to see that its input ended.
        if (Poll(std::min(Left(deadline), kEndInterval), true))
            Receive();
    }
    return HasFinished();
}

TransportEnd ProcessTransport::End(std::chrono::milliseconds patience)
{
    if (m_end)
        return *m_end;
    m_input = UniqueFd();
    m_toSend.clear();
    if (!WaitForFinished(QDeadlineTimer(patience))) {
        m_process.terminate();
        if (!WaitForFinished(QDeadlineTimer(kPatienceAfterTerminate))) {
            m_process.kill();
            m_process.waitForFinished(-1);
        }
    }
    for (int reads = 0; reads < kMaxLastReads && ReadErrorOutput(); ++reads) {
    }
    m_output = UniqueFd();
    m_errorNotifier.reset();
    m_error = UniqueFd();
    const bool exited = m_process.exitStatus() == QProcess::NormalExit;
    m_end = exited ? TransportEnd{TransportEnd::How::Exited, m_process.exitCode()}
                   : TransportEnd{TransportEnd::How::Killed, 0};
    return *m_end;
}

} // namespace quenvolta
