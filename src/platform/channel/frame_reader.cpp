#include "platform/channel/frame_reader.h"

#include "platform/channel/protocol.h"

#include <QtEndian>

#include <algorithm>

namespace quenvolta
{

void FrameReader::Append(QByteArrayView piece)
{
    if (m_offset == m_buffer.size()) {
        m_buffer.resize(0);
        m_offset = 0;
    } else if (m_hasMagicLine && m_offset > m_buffer.size() / 2) {
        m_buffer.remove(0, m_offset);
        m_offset = 0;
    }
    m_buffer.append(piece);
}

// Until the line is found, m_offset is where a search must go on.
bool FrameReader::FindMagicLine()
{
    const qsizetype found = m_buffer.indexOf(kMagicLine, m_offset);
    const qsizetype noise = found < 0 ? m_buffer.size() : found;
    if (noise > m_maxNoise + (found < 0 ? kMagicLine.size() - 1 : 0)) {
        m_fault = ChannelText::NoMagicLine;
        return false;
    }
    if (found < 0) {
        m_offset = std::max<qsizetype>(0, m_buffer.size() - kMagicLine.size() + 1);
        return false;
    }
    m_noise = m_buffer.first(found);
    m_offset = found + kMagicLine.size();
    m_hasMagicLine = true;
    return true;
}

std::optional<QByteArrayView> FrameReader::Next()
{
    if (m_fault || (!m_hasMagicLine && !FindMagicLine()))
        return std::nullopt;
    const QByteArrayView rest = QByteArrayView(m_buffer).sliced(m_offset);
    if (rest.size() < kFrameHeaderSize)
        return std::nullopt;
    const auto size = static_cast<qsizetype>(qFromBigEndian<quint32>(rest.data()));
    if (size == 0 || size > kMaxFrameSize) {
        m_fault = ChannelText::BadFrameLength;
        return std::nullopt;
    }
    if (rest.size() - kFrameHeaderSize < size)
        return std::nullopt;
    m_offset += kFrameHeaderSize + size;
    return rest.sliced(kFrameHeaderSize, size);
}

QByteArray FrameReader::Noise() const
{
    return m_hasMagicLine ? m_noise : m_buffer.first(std::min(m_buffer.size(), m_maxNoise));
}

} // namespace quenvolta
