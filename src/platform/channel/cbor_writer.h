#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QStringView>

#include <cstdint>

namespace quenvolta
{

/// Writes CBOR (RFC 8949) with definite lengths in its shortest form, within the protocol's bounds of nesting and
/// items. After the first fault everything else is ignored; what was written is of no use then.
class CborWriter
{
public:
    void Null() { Simple(0xF6); }
    void Bool(bool value) { Simple(value ? 0xF5 : 0xF4); }
    void Integer(std::int64_t value);
    /// A text that is no valid UTF-16 is a fault.
    void Text(QStringView text);
    void Bytes(QByteArrayView bytes);
    /// Opens an array of exactly `length` items; Leave() closes it.
    void EnterArray(qsizetype length);
    /// Opens a map of exactly `length` pairs of items; Leave() closes it.
    void EnterMap(qsizetype length);
    void Leave() { --m_depth; }

    /// Marks what was written as useless.
    void Fail() { m_ok = false; }
    bool Ok() const { return m_ok; }

    const QByteArray& Data() const { return m_data; }
    qsizetype Items() const { return m_items; }
    /// Says how many arrays and maps are to stand around what is written next.
    void SetDepth(int depth) { m_depth = depth; }

    /// Adds the items that another writer wrote.
    void Append(const CborWriter& items);

    /// Takes back what was written since `data` bytes and `items` items stood here, and a fault with it.
    void RollBack(qsizetype data, qsizetype items);
    /// Forgets everything, but keeps its memory.
    void Clear();

private:
    void Head(std::uint8_t major, std::uint64_t argument);
    void Simple(std::uint8_t byte);
    void Count();
    void Deeper();

    QByteArray m_data;
    qsizetype m_items = 0;
    int m_depth = 0;
    bool m_ok = true;
};

} // namespace quenvolta
