#include "platform/channel/frame.h"

#include "platform/channel/protocol.h"

#include <QtEndian>

namespace quenvolta
{

QByteArray MakeFrame(QByteArrayView bytes)
{
    if (bytes.size() > kMaxFrameSize)
        return {};
    QByteArray frame(kFrameHeaderSize, Qt::Uninitialized);
    qToBigEndian(static_cast<quint32>(bytes.size()), frame.data());
    frame.reserve(kFrameHeaderSize + bytes.size());
    frame.append(bytes);
    return frame;
}

} // namespace quenvolta
