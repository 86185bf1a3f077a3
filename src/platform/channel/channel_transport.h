#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QDeadlineTimer>

#include <chrono>

namespace quenvolta
{

/// How the other end of a transport came to its end.
struct TransportEnd {
    enum class How {
        NotFound,  ///< there is no such program
        Forbidden, ///< the program may not be run
        Exited,    ///< it ended by itself, or could not be started for another reason
        Killed,    ///< by a signal
    };
    How how = How::Exited;
    /// Only for Exited.
    int exitCode = 0;
};

/// Carries bytes to a provider and back. Sending never waits.
class IChannelTransport
{
public:
    /// Ends the other side (see End) with some patience.
    virtual ~IChannelTransport() = default;

    /// Takes bytes to send; they leave during Wait and Flush at the latest. Without effect once the end was reached.
    virtual void Send(QByteArrayView bytes) = 0;
    /// Waits until what was taken has left, or the deadline has passed.
    virtual void Flush(QDeadlineTimer deadline) = 0;
    /// What has arrived since the last call.
    virtual QByteArray Receive() = 0;
    /// Waits until something arrives, the end is reached, or the deadline has passed.
    virtual void Wait(QDeadlineTimer deadline) = 0;
    /// False when nothing can arrive any more. What arrived before may still have to be received.
    virtual bool IsOpen() const = 0;
    /// Ends the other side: closes its input, gives it this time to end, then makes it end. Tells how it ended; may be
    /// called again.
    virtual TransportEnd End(std::chrono::milliseconds patience) = 0;
    /// What the other side wrote for people, at least the last 64 KiB of it.
    virtual QByteArray ErrorOutput() const = 0;
};

} // namespace quenvolta
