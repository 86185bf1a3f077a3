#include "platform/channel/cbor_writer.h"

#include "platform/channel/protocol.h"

#include <QtEndian>

#include <algorithm>

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

bool IsAscii(QStringView text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x80; });
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
    } else if (IsAscii(text)) {
        Head(kTextString, static_cast<std::uint64_t>(text.size()));
        const qsizetype start = m_data.size();
        m_data.resize(start + text.size());
        std::transform(text.cbegin(), text.cend(), m_data.begin() + start,
                       [](QChar c) { return static_cast<char>(c.unicode()); });
    } else if (text.isValidUtf16()) {
        const QByteArray utf8 = text.toUtf8();
        Head(kTextString, static_cast<std::uint64_t>(utf8.size()));
        m_data.append(utf8);
    } else {
        m_ok = false;
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
