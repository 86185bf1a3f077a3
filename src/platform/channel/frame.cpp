#include "platform/channel/frame.h"

#include "platform/channel/protocol.h"

#include <QtEndian>

namespace quenvolta
{

QByteArray MakeFrame(QByteArrayView first, QByteArrayView second)
{
    const qsizetype size = first.size() + second.size();
    if (size > kMaxFrameSize)
        return {};
    QByteArray frame(kFrameHeaderSize, Qt::Uninitialized);
    qToBigEndian(static_cast<quint32>(size), frame.data());
    frame.reserve(kFrameHeaderSize + size);
    frame.append(first);
    frame.append(second);
    return frame;
}

} // namespace quenvolta
