#include "platform/channel/row_columns.h"

#include "platform/channel/protocol.h"

namespace quenvolta
{

namespace
{

// The number of rows and the head of the list of columns.
constexpr qsizetype kOwnItems = 2;
constexpr qsizetype kOwnBytes = 18;

} // namespace

RowColumns::RowColumns(const ClassDefinition& shape)
{
    m_columns.reserve(static_cast<std::size_t>(shape.properties.size()));
    for (const PropertyDefinition& property : shape.properties)
        m_columns.emplace_back(property.type);
}

void RowColumns::Clear()
{
    m_rows = 0;
    for (RowColumn& column : m_columns)
        column.Clear();
}

bool RowColumns::Add(std::span<const Variant> values, qsizetype otherItems, qsizetype otherBytes)
{
    if (m_columns.empty() || values.size() != m_columns.size())
        return false;
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        m_columns[i].Add(values[i]);
    ++m_rows;
    Measure();
    if (m_ok && otherItems + m_items <= kMaxItems && m_rows * static_cast<qsizetype>(m_columns.size()) <= kMaxItems &&
        otherBytes + m_bytes <= kMaxFrameSize)
        return true;
    --m_rows;
    for (RowColumn& column : m_columns)
        column.TakeBack();
    Measure();
    return false;
}

void RowColumns::Measure()
{
    m_bytes = kOwnBytes;
    m_items = kOwnItems;
    m_ok = true;
    for (const RowColumn& column : m_columns) {
        m_bytes += column.Bytes();
        m_items += column.Items();
        m_ok = m_ok && column.Ok();
    }
}

void RowColumns::Write(CborWriter* out) const
{
    out->Integer(m_rows);
    out->EnterArray(static_cast<qsizetype>(m_columns.size()));
    for (const RowColumn& column : m_columns)
        column.Write(out);
    out->Leave();
}

} // namespace quenvolta
