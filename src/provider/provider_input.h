#pragma once

#include "platform/channel/frame_reader.h"
#include "platform/channel/message.h"
#include "platform/channel/shape_cache.h"

#include <QString>

#include <deque>
#include <optional>

namespace quenvolta
{

/// The messages that the console sends.
class ProviderInput
{
public:
    /// Reads from an open descriptor, which stays the caller's.
    explicit ProviderInput(int descriptor);

    /// The next message; nothing when the input has ended or is broken.
    std::optional<Message> Wait();

    /// The next message that has come, without waiting; nothing when there is none.
    std::optional<Message> Take();

    /// True when the input has ended or is broken, and every message was taken.
    bool HasEnded() const { return m_ended && m_waiting.empty(); }

    /// What to poll for more.
    int Descriptor() const { return m_descriptor; }

    /// Looks at what has come, without waiting. True when the input has ended, or the console wants no more of
    /// the call.
    bool EndedOrStopped(std::uint32_t callId);

    /// Why the input is broken; empty when it isn't.
    const QString& Fault() const { return m_fault; }

private:
    bool ReadSome(int timeoutMs);
    void TakeFrames();

    int m_descriptor;
    FrameReader m_frames;
    ShapeCache m_shapes;
    std::deque<Message> m_waiting;
    bool m_ended = false;
    QString m_fault;
};

} // namespace quenvolta
