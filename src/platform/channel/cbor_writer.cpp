#include "platform/channel/cbor_writer.h"

#include "platform/channel/protocol.h"

#include <QStringEncoder>
#include <QtEndian>

namespace quenvolta
{

namespace
{

constexpr std::uint8_t kUnsigned = 0x00;
constexpr std::uint8_t kNegative = 0x20;
constexpr std::uint8_t kByteString = 0x40;
constexpr std::uint8_t kTextString = 0x60;
constexpr std::uint8_t kArray = 0x80;
constexpr std::uint8_t kMap = 0xA0;

template <typename Number>
void AppendBigEndian(QByteArray* data, Number number)
{
    const Number swapped = qToBigEndian(number);
    data->append(reinterpret_cast<const char*>(&swapped), sizeof swapped);
}

} // namespace

void CborWriter::Count()
{
    if (++m_items > kMaxItems)
        m_ok = false;
}

void CborWriter::Simple(std::uint8_t byte)
{
    Count();
    m_data.append(static_cast<char>(byte));
}

void CborWriter::Head(std::uint8_t major, std::uint64_t argument)
{
    const auto first = [&](std::uint8_t low) { m_data.append(static_cast<char>(major | low)); };
    if (argument < 24) {
        first(static_cast<std::uint8_t>(argument));
    } else if (argument <= 0xFF) {
        first(24);
        m_data.append(static_cast<char>(argument));
    } else if (argument <= 0xFFFF) {
        first(25);
        AppendBigEndian(&m_data, static_cast<std::uint16_t>(argument));
    } else if (argument <= 0xFFFFFFFF) {
        first(26);
        AppendBigEndian(&m_data, static_cast<std::uint32_t>(argument));
    } else {
        first(27);
        AppendBigEndian(&m_data, argument);
    }
}

void CborWriter::Integer(std::int64_t value)
{
    Count();
    if (value >= 0)
        Head(kUnsigned, static_cast<std::uint64_t>(value));
    else
        Head(kNegative, ~static_cast<std::uint64_t>(value));
}

void CborWriter::Text(QStringView text)
{
    Count();
    if (text.size() > kMaxFrameSize) {
        m_ok = false;
        return;
    }
    // Nearly all texts are ASCII: the head for such a one is written first, and replaced where it was wrong.
    const qsizetype start = m_data.size();
    Head(kTextString, static_cast<std::uint64_t>(text.size()));
    const qsizetype body = m_data.size();
    QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    m_data.resize(body + encoder.requiredSpace(text.size()));
    const char* const end = encoder.appendToBuffer(m_data.data() + body, text);
    m_data.truncate(end - m_data.constData());
    if (const qsizetype size = m_data.size() - body; size != text.size()) {
        m_ok = m_ok && text.isValidUtf16();
        const QByteArray utf8 = m_data.sliced(body);
        m_data.truncate(start);
        Head(kTextString, static_cast<std::uint64_t>(size));
        m_data.append(utf8);
    }
}

void CborWriter::Bytes(QByteArrayView bytes)
{
    Count();
    Head(kByteString, static_cast<std::uint64_t>(bytes.size()));
    m_data.append(bytes);
}

void CborWriter::Deeper()
{
    Count();
    if (++m_depth > kMaxNesting)
        m_ok = false;
}

void CborWriter::EnterArray(qsizetype length)
{
    Deeper();
    Head(kArray, static_cast<std::uint64_t>(length));
}

void CborWriter::EnterMap(qsizetype length)
{
    Deeper();
    Head(kMap, static_cast<std::uint64_t>(length));
}

void CborWriter::Append(const CborWriter& items)
{
    m_data.append(items.m_data);
    m_items += items.m_items;
    m_ok = m_ok && items.m_ok && m_items <= kMaxItems;
}

void CborWriter::RollBack(qsizetype data, qsizetype items)
{
    m_data.truncate(data);
    m_items = items;
    m_ok = true;
}

void CborWriter::Clear()
{
    m_data.resize(0);
    m_items = 0;
    m_depth = 0;
    m_ok = true;
}

} // namespace quenvolta
