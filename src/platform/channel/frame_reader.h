#pragma once

#include "platform/channel/channel_texts.h"

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace quenvolta
{

/// Makes whole frames from what arrives in pieces, beginning behind the magic line.
class FrameReader
{
public:
    /// `maxNoise` bytes may precede the magic line.
    explicit FrameReader(qsizetype maxNoise)
        : m_maxNoise(maxNoise)
    {
    }

    /// Takes the next piece. Must not be called any more after a fault.
    void Append(QByteArrayView piece);

    /// The next whole frame without its length, valid until the next Append; nothing when more is needed or after a
    /// fault.
    std::optional<QByteArrayView> Next();

    /// What is wrong: BadFrameLength, or NoMagicLine when too much came without one.
    std::optional<ChannelText> Fault() const { return m_fault; }

    bool HasMagicLine() const { return m_hasMagicLine; }
    /// What came before the magic line, or so far without one; at most `maxNoise` bytes.
    QByteArray Noise() const;
    /// True when something came behind the last whole frame.
    bool HasRest() const { return m_buffer.size() > m_offset; }

private:
    bool FindMagicLine();

    qsizetype m_maxNoise;
    QByteArray m_buffer;
    qsizetype m_offset = 0; // what is before it was handed out
    QByteArray m_noise;
    bool m_hasMagicLine = false;
    std::optional<ChannelText> m_fault;
};

} // namespace quenvolta
