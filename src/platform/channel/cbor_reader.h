#pragma once

#include "platform/channel/channel_texts.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QCborStreamReader>
#include <QString>

#include <cstdint>
#include <optional>

namespace quenvolta
{

/// Reads one CBOR item of known parts, and checks every length against what is left of the frame and of the
/// protocol's bounds before anything is allocated. After the first fault every operation gives an empty value and
/// moves nothing.
class CborReader
{
public:
    /// `item` must live as long as the reader.
    explicit CborReader(QByteArrayView item);

    bool Ok() const { return !m_fault; }
    /// What was wrong first; only when not Ok().
    ChannelText Fault() const { return *m_fault; }
    /// Reports a fault of the item's meaning.
    void Fail(ChannelText fault);

    /// True, and the null is taken, when the next item is null.
    bool TakeNull();
    bool TakeBool();
    std::int64_t TakeInteger(std::int64_t least, std::int64_t most);
    QString TakeText();
    /// A byte string of exactly `length` bytes.
    QByteArray TakeBytes(qsizetype length);

    /// Opens an array and gives its length (0 after a fault); Leave() closes it when all items were taken.
    qsizetype EnterArray();
    /// Opens an array that must have `length` items.
    void EnterArrayOf(qsizetype length);
    /// Opens a map and gives its number of pairs, at most `most`.
    qsizetype EnterMap(qsizetype most);
    void Leave();
    /// Reports what follows the item.
    void ExpectEnd();

    QCborStreamReader::Type NextType() const { return m_reader.type(); }

    /// The bytes from the next item on.
    QByteArrayView Rest() const { return m_item.sliced(static_cast<qsizetype>(m_reader.currentOffset())); }
    qsizetype Items() const { return m_items; }
    /// Passes over the next item, which is known to consist of `items` items.
    void Skip(qsizetype items);

private:
    bool Expect(bool rightType);
    bool Count(qsizetype items);
    void Advance();
    qsizetype Enter(bool rightType, qsizetype itemsEach);

    QByteArrayView m_item;
    QCborStreamReader m_reader;
    qsizetype m_items = 0;
    int m_depth = 0;
    std::optional<ChannelText> m_fault;
};

} // namespace quenvolta
