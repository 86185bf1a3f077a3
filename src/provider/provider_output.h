#pragma once

#include "platform/channel/message.h"

#include <QByteArray>

namespace quenvolta
{

/// Where the messages to the console go. Once the console is gone, nothing is sent any more.
class ProviderOutput
{
public:
    /// Writes to an open descriptor, which stays the caller's.
    explicit ProviderOutput(int descriptor);

    void SendMagicLine();
    void Send(const Message& message);
    void SendFrame(QByteArrayView frame);

    bool IsGone() const { return m_gone; }

private:
    int m_descriptor;
    bool m_gone = false;
};

} // namespace quenvolta
