#include "provider/provider_input.h"

#include "platform/channel/message_codec.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace quenvolta
{

namespace
{

constexpr std::size_t kPieceSize = 64 * 1024;
// So many messages may wait; what the console sends beyond stays in the pipe.
constexpr std::size_t kMostWaiting = 1024;

} // namespace

ProviderInput::ProviderInput(int descriptor)
    : m_descriptor(descriptor)
    , m_frames(0) // the console has nothing to say before its magic line
{
}

std::optional<Message> ProviderInput::Wait()
{
    while (m_waiting.empty() && !m_ended)
        ReadSome(-1);
    return Take();
}

std::optional<Message> ProviderInput::Take()
{
    if (m_waiting.empty() && !m_ended)
        ReadSome(0);
    if (m_waiting.empty())
        return std::nullopt;
    Message message = std::move(m_waiting.front());
    m_waiting.pop_front();
    return message;
}

bool ProviderInput::EndedOrStopped(std::uint32_t callId)
{
    while (!m_ended && m_waiting.size() < kMostWaiting && ReadSome(0)) {
    }
    const auto stop = std::find_if(m_waiting.begin(), m_waiting.end(), [callId](const Message& message) {
        const StopMessage* each = std::get_if<StopMessage>(&message);
        return each && each->callId == callId;
    });
    return m_ended || stop != m_waiting.end();
}

// True when something was read.
bool ProviderInput::ReadSome(int timeoutMs)
{
    pollfd watched{m_descriptor, POLLIN, 0};
    if (::poll(&watched, 1, timeoutMs) <= 0)
        return false;
    std::array<char, kPieceSize> piece{};
    const ssize_t length = ::read(m_descriptor, piece.data(), piece.size());
    if (length < 0 && (errno == EINTR || errno == EAGAIN))
        return false;
    if (length <= 0) {
        m_ended = true;
        return false;
    }
    m_frames.Append({piece.data(), length});
    TakeFrames();
    return true;
}

void ProviderInput::TakeFrames()
{
    while (const std::optional<QByteArrayView> frame = m_frames.Next()) {
        auto decoded = Decode(*frame, &m_shapes);
        if (const DecodeFailure* failure = std::get_if<DecodeFailure>(&decoded)) {
            m_fault = failure->text;
            m_ended = true;
            return;
        }
        m_waiting.push_back(std::move(std::get<Message>(decoded)));
    }
    if (m_frames.Fault()) {
        m_fault = ChannelTextOf(*m_frames.Fault());
        m_ended = true;
    }
}

} // namespace quenvolta
