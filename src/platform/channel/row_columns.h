#pragma once

#include "platform/channel/row_column.h"
#include "platform/wbem/class_definition.h"

#include <span>
#include <vector>

namespace quenvolta
{

/// Rows of one class being written, column by column.
class RowColumns
{
public:
    explicit RowColumns(const ClassDefinition& shape);

    /// Adds a row, a value for each property. False, and nothing is added, when a value doesn't fit its type or all of
    /// it would no longer fit into a message whose other parts have `otherItems` items and `otherBytes` bytes.
    bool Add(std::span<const Variant> values, qsizetype otherItems, qsizetype otherBytes);

    qsizetype Rows() const { return m_rows; }
    /// At least what Write() writes.
    qsizetype Bytes() const { return m_bytes; }
    /// Writes the number of rows and the columns.
    void Write(CborWriter* out) const;
    void Clear();

private:
    void Measure();

    std::vector<RowColumn> m_columns;
    qsizetype m_rows = 0;
    qsizetype m_bytes = 0;
    qsizetype m_items = 0;
    bool m_ok = true;
};

} // namespace quenvolta
