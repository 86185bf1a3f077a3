#include "platform/channel/channel.h"

#include "platform/channel/message_codec.h"

#include <algorithm>
#include <utility>

namespace quenvolta
{

using namespace std::chrono_literals;

namespace
{

/// A peer that broke the protocol, or never answered, gets no more time than this to end by itself.
constexpr auto kPatienceAfterFailure = 200ms;
/// A peer that closed its output is about to end.
constexpr auto kPatienceAfterClose = 2s;
/// A peer that doesn't read holds nobody up longer who only wants to tell it something.
constexpr auto kFlushTimeout = 1s;
/// How often a person can give up a connection that is being made.
constexpr std::chrono::milliseconds kAskInterval = 50ms;

std::chrono::milliseconds LeftOf(const QDeadlineTimer& deadline)
{
    return std::chrono::ceil<std::chrono::milliseconds>(deadline.remainingTimeAsDuration());
}

} // namespace

Channel::Channel(std::unique_ptr<IChannelTransport> transport, const ProviderCommand& command,
                 const QMap<QString, QString>& about)
    : m_transport(std::move(transport))
    , m_failures(command)
    , m_helloTimeout(command.helloTimeout)
    , m_isStillWanted(command.isStillWanted)
    , m_reader(kMaxNoise)
{
    ExchangeHellos(about);
}

void Channel::ExchangeHellos(const QMap<QString, QString>& about)
{
    const QDeadlineTimer deadline(m_helloTimeout);
    m_transport->Send(kMagicLine);
    m_transport->Send(Encode(HelloMessage{kProtocolVersion, about}));
    while (IsAlive() && !m_hasHello) {
        if (!m_isStillWanted) {
            Pump(deadline);
        } else if (m_isStillWanted()) {
            Pump(QDeadlineTimer(std::min(kAskInterval, LeftOf(deadline))));
        } else {
            m_transport->End(kPatienceAfterFailure);
            Fail(m_failures.Cancelled());
        }
        if (IsAlive() && !m_hasHello && deadline.hasExpired()) {
            m_transport->End(kPatienceAfterFailure);
            Fail(m_failures.NoAnswerInTime(m_reader.Noise(), m_transport->ErrorOutput()));
        }
    }
}

std::uint32_t Channel::NextCallId()
{
    do {
        ++m_lastCallId;
    } while (m_sent.contains(m_lastCallId));
    return m_lastCallId;
}

std::shared_ptr<PendingCall> Channel::Send(CallMessage call, const std::optional<QString>& streamed)
{
    auto pending = std::make_shared<PendingCall>(call.operation, streamed);
    if (!IsAlive()) {
        pending->Lose(RPC_E_DISCONNECTED, CreateErrorInfo(m_failure.text));
        return pending;
    }
    call.callId = NextCallId();
    const std::uint32_t callId = call.callId;
    const QByteArray frame = Encode(Message(std::move(call)));
    if (frame.isEmpty())
        return nullptr;
    m_sent.insert(callId, {pending, 0});
    m_transport->Send(frame);
    return pending;
}

void Channel::Stop(const std::shared_ptr<PendingCall>& call)
{
    for (auto sent = m_sent.cbegin(); IsAlive() && sent != m_sent.cend(); ++sent) {
        if (sent->call.lock() == call) {
            m_transport->Send(Encode(StopMessage{sent.key()}));
            m_transport->Flush(QDeadlineTimer(kFlushTimeout));
            return;
        }
    }
}

void Channel::Pump(QDeadlineTimer deadline)
{
    if (!IsAlive() || TakeFrames())
        return;
    if (m_transport->IsOpen()) {
        m_transport->Wait(deadline);
        TakeFrames();
        return;
    }
    const TransportEnd end = m_transport->End(kPatienceAfterClose);
    const QByteArray errorOutput = m_transport->ErrorOutput();
    Fail(m_hasHello ? m_failures.ConnectionLost(errorOutput)
                    : m_failures.EndedBeforeHello(end, m_reader.Noise(), errorOutput));
}

// True when something arrived.
bool Channel::TakeFrames()
{
    const QByteArray received = m_transport->Receive();
    if (received.isEmpty())
        return false;
    m_reader.Append(received);
    while (IsAlive()) {
        const std::optional<QByteArrayView> frame = m_reader.Next();
        if (!frame)
            break;
        std::variant<Message, DecodeFailure> decoded = Decode(*frame, &m_shapes);
        if (const auto* const failure = std::get_if<DecodeFailure>(&decoded))
            FailInvalid(failure->text);
        else
            Take(std::get<Message>(decoded));
    }
    if (IsAlive() && m_reader.Fault())
        FailInvalid(*m_reader.Fault());
    return true;
}

void Channel::Take(const Message& message)
{
    const auto* const hello = std::get_if<HelloMessage>(&message);
    const auto* const rows = std::get_if<RowsMessage>(&message);
    const auto* const result = std::get_if<ResultMessage>(&message);
    if (hello && !m_hasHello)
        TakeHello(*hello);
    else if (rows && m_hasHello)
        TakeRows(*rows);
    else if (result && m_hasHello)
        TakeResult(*result);
    else
        FailInvalid(ChannelText::UnexpectedMessage);
}

void Channel::TakeHello(const HelloMessage& hello)
{
    if (hello.protocolVersion == kProtocolVersion) {
        m_hasHello = true;
        return;
    }
    m_transport->End(kPatienceAfterFailure);
    Fail(m_failures.VersionMismatch(hello.protocolVersion, m_transport->ErrorOutput()));
}

void Channel::TakeRows(const RowsMessage& rows)
{
    const auto sent = m_sent.find(rows.callId);
    if (sent == m_sent.end()) {
        FailInvalid(ChannelText::UnknownCall);
        return;
    }
    sent->rows += rows.Rows();
    const std::shared_ptr<PendingCall> call = sent->call.lock();
    if (sent->rows > kMaxRowsPerCall)
        FailInvalid(ChannelText::TooManyRows);
    else if (call && !call->Take(rows))
        FailInvalid(ChannelText::UnexpectedMessage);
}

void Channel::TakeResult(const ResultMessage& result)
{
    const auto sent = m_sent.find(result.callId);
    if (sent == m_sent.end()) {
        FailInvalid(ChannelText::UnknownCall);
        return;
    }
    const std::shared_ptr<PendingCall> call = sent->call.lock();
    if (call && !call->Take(result)) {
        FailInvalid(ChannelText::MissingResult);
        return;
    }
    m_sent.erase(sent);
}

void Channel::FailInvalid(ChannelText what)
{
    FailInvalid(ChannelTextOf(what));
}

void Channel::FailInvalid(const QString& what)
{
    m_transport->End(kPatienceAfterFailure);
    Fail(m_failures.InvalidData(what, m_reader.Noise(), m_transport->ErrorOutput()));
}

void Channel::Fail(const ChannelFailure& failure)
{
    m_failure = failure;
    const ErrorInfoPtr error = CreateErrorInfo(failure.text);
    for (const Sent& sent : std::as_const(m_sent)) {
        if (const std::shared_ptr<PendingCall> call = sent.call.lock())
            call->Lose(failure.code, error);
    }
    m_sent.clear();
}

} // namespace quenvolta
