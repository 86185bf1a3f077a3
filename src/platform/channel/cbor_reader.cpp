#include "platform/channel/cbor_reader.h"

#include "platform/channel/protocol.h"

#include <QStringDecoder>
#include <QVarLengthArray>

namespace quenvolta
{

namespace
{

constexpr qsizetype kUsualTextSize = 256;

} // namespace

CborReader::CborReader(QByteArrayView item)
    : m_item(item)
    , m_reader(item.data(), item.size())
{
}

void CborReader::Fail(ChannelText fault)
{
    if (!m_fault)
        m_fault = fault;
}

bool CborReader::Count(qsizetype items)
{
    m_items += items;
    if (m_items > kMaxItems)
        Fail(ChannelText::TooManyItems);
    return Ok();
}

// True when the next item may be read; it is counted then.
bool CborReader::Expect(bool rightType)
{
    if (!Ok())
        return false;
    if (m_reader.lastError() != QCborError::NoError)
        Fail(ChannelText::Malformed);
    else if (!rightType)
        Fail(ChannelText::WrongType);
    return Ok() && Count(1);
}

void CborReader::Advance()
{
    if (!m_reader.next())
        Fail(ChannelText::Malformed);
}

bool CborReader::TakeNull()
{
    if (!Ok() || !m_reader.isNull() || !Expect(true))
        return false;
    Advance();
    return true;
}

bool CborReader::TakeBool()
{
    if (!Expect(m_reader.isBool()))
        return false;
    const bool value = m_reader.toBool();
    Advance();
    return value;
}

std::int64_t CborReader::TakeInteger(std::int64_t least, std::int64_t most)
{
    if (!Expect(m_reader.isInteger()))
        return 0;
    // Both kinds of integer have 64 bits of magnitude; what is beyond 63 is out of every range here.
    const bool negative = m_reader.isNegativeInteger();
    const std::uint64_t magnitude =
        negative ? static_cast<std::uint64_t>(m_reader.toNegativeInteger()) - 1 : m_reader.toUnsignedInteger();
    const auto whole = static_cast<std::int64_t>(magnitude);
    const std::int64_t value = negative ? -1 - whole : whole;
    if (whole < 0 || value < least || value > most) {
        Fail(ChannelText::OutOfRange);
        return 0;
    }
    Advance();
    return value;
}

QString CborReader::TakeText()
{
    if (!Expect(m_reader.isString()))
        return {};
    if (!m_reader.isLengthKnown()) {
        Fail(ChannelText::IndefiniteLength);
        return {};
    }
    const quint64 length = m_reader.length();
    if (length > static_cast<quint64>(Rest().size())) {
        Fail(ChannelText::LengthBeyondFrame);
        return {};
    }
    // The reader's own texts cost three allocations each.
    QVarLengthArray<char, kUsualTextSize> bytes(static_cast<qsizetype>(length));
    const QCborStreamReader::StringResult<qsizetype> chunk = m_reader.readStringChunk(bytes.data(), bytes.size());
    if (chunk.status != QCborStreamReader::Ok || chunk.data != bytes.size() ||
        m_reader.readStringChunk(bytes.data(), 0).status != QCborStreamReader::EndOfString) {
        Fail(ChannelText::Malformed);
        return {};
    }
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom |
                                                     QStringDecoder::Flag::ConvertInvalidToNull);
    QString text(bytes.size(), Qt::Uninitialized);
    const QChar* const end = decoder.appendToBuffer(text.data(), QByteArrayView(bytes));
    if (decoder.hasError()) {
        Fail(ChannelText::Malformed);
        return {};
    }
    text.truncate(end - text.constData());
    return text;
}

QByteArray CborReader::TakeBytes(qsizetype length)
{
    if (!Expect(m_reader.isByteArray()))
        return {};
    if (!m_reader.isLengthKnown() || m_reader.length() != static_cast<quint64>(length)) {
        Fail(ChannelText::WrongLength);
        return {};
    }
    const QCborStreamReader::StringResult<QByteArray> bytes = m_reader.readByteArray();
    if (bytes.status != QCborStreamReader::Ok || m_reader.readByteArray().status != QCborStreamReader::EndOfString) {
        Fail(ChannelText::Malformed);
        return {};
    }
    return bytes.data;
}

qsizetype CborReader::Enter(bool rightType, qsizetype itemsEach)
{
    if (!Expect(rightType))
        return 0;
    if (!m_reader.isLengthKnown()) {
        Fail(ChannelText::IndefiniteLength);
        return 0;
    }
    const quint64 length = m_reader.length();
    if (length > static_cast<quint64>(Rest().size())) {
        Fail(ChannelText::LengthBeyondFrame);
    } else if (m_items + static_cast<qsizetype>(length) * itemsEach > kMaxItems) {
        Fail(ChannelText::TooManyItems);
    } else if (m_depth >= kMaxNesting) {
        Fail(ChannelText::TooDeep);
    } else if (!m_reader.enterContainer()) {
        Fail(ChannelText::Malformed);
    }
    if (!Ok())
        return 0;
    ++m_depth;
    return static_cast<qsizetype>(length);
}

qsizetype CborReader::EnterArray()
{
    return Enter(m_reader.isArray(), 1);
}

void CborReader::EnterArrayOf(qsizetype length)
{
    if (EnterArray() != length)
        Fail(ChannelText::WrongLength);
}

qsizetype CborReader::EnterMap(qsizetype most)
{
    const qsizetype length = Enter(m_reader.isMap(), 2);
    if (length > most) {
        Fail(ChannelText::WrongLength);
        return 0;
    }
    return length;
}

void CborReader::Leave()
{
    if (!Ok())
        return;
    const bool isSound = m_reader.lastError() == QCborError::NoError;
    if (isSound && m_reader.hasNext())
        Fail(ChannelText::WrongLength);
    else if (!isSound || !m_reader.leaveContainer())
        Fail(ChannelText::Malformed);
    --m_depth;
}

void CborReader::ExpectEnd()
{
    if (Ok() && !Rest().isEmpty())
        Fail(ChannelText::TrailingBytes);
}

void CborReader::Skip(qsizetype items)
{
    if (Ok() && Count(items))
        Advance();
}

} // namespace quenvolta
