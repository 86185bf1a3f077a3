#pragma once

#include "platform/channel/channel_failure.h"
#include "platform/channel/channel_transport.h"
#include "platform/channel/frame_reader.h"
#include "platform/channel/message.h"
#include "platform/channel/pending_call.h"
#include "platform/channel/shape_cache.h"

#include <QDeadlineTimer>
#include <QHash>

#include <cstdint>
#include <memory>

namespace quenvolta
{

/// The client's end of one connection to a provider. Calls are sent with Send; their answers come while something
/// pumps. Used on one thread; runs no event loop.
class Channel
{
public:
    /// Takes up the conversation over `transport`, which was started by `command`. The channel is dead when that
    /// failed; Failure() tells why.
    Channel(std::unique_ptr<IChannelTransport> transport, const ProviderCommand& command,
            const QMap<QString, QString>& about);

    bool IsAlive() const { return Succeeded(m_failure.code); }
    /// Why it is dead.
    const ChannelFailure& Failure() const { return m_failure; }

    /// Sends a call; its callId is chosen here. Null when the call can't travel. On a dead channel the call is done at
    /// once, with RPC_E_DISCONNECTED. Who drops the call doesn't get its answer.
    std::shared_ptr<PendingCall> Send(CallMessage call, const std::optional<QString>& streamed = std::nullopt);
    /// Tells the provider that the rest of an enumeration isn't wanted.
    void Stop(const std::shared_ptr<PendingCall>& call);

    /// Takes what has arrived; when that was nothing, waits for something until the deadline.
    void Pump(QDeadlineTimer deadline);

private:
    struct Sent {
        std::weak_ptr<PendingCall> call;
        qsizetype rows = 0;
    };

    void ExchangeHellos(const QMap<QString, QString>& about);
    bool TakeFrames();
    void Take(const Message& message);
    void TakeHello(const HelloMessage& hello);
    void TakeRows(const RowsMessage& rows);
    void TakeResult(const ResultMessage& result);
    void FailInvalid(ChannelText what);
    void FailInvalid(const QString& what);
    void Fail(const ChannelFailure& failure);
    std::uint32_t NextCallId();

    std::unique_ptr<IChannelTransport> m_transport;
    ChannelFailures m_failures;
    std::chrono::milliseconds m_helloTimeout;
    std::function<bool()> m_isStillWanted;
    FrameReader m_reader;
    ShapeCache m_shapes;
    QHash<std::uint32_t, Sent> m_sent; // calls without a Result, dropped ones too
    std::uint32_t m_lastCallId = 0;
    bool m_hasHello = false;
    ChannelFailure m_failure;
};

} // namespace quenvolta
