#include "provider/provider_output.h"

#include "platform/channel/message_codec.h"
#include "platform/channel/protocol.h"

#include <cerrno>
#include <unistd.h>

namespace quenvolta
{

ProviderOutput::ProviderOutput(int descriptor)
    : m_descriptor(descriptor)
{
}

void ProviderOutput::SendMagicLine()
{
    SendFrame(kMagicLine);
}

void ProviderOutput::Send(const Message& message)
{
    SendFrame(Encode(message));
}

void ProviderOutput::SendFrame(QByteArrayView frame)
{
    while (!m_gone && !frame.isEmpty()) {
        const ssize_t written = ::write(m_descriptor, frame.data(), static_cast<std::size_t>(frame.size()));
        if (written >= 0)
            frame = frame.sliced(written);
        else if (errno != EINTR)
            m_gone = true;
    }
}

} // namespace quenvolta
