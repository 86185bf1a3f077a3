#pragma once

#include "platform/channel/cbor_writer.h"
#include "platform/wbem/variant.h"

#include <QString>

#include <vector>

namespace quenvolta
{

/// True for the types whose values a column may hold as one text.
inline bool IsPackedType(CimType type)
{
    return type == CimType::String || type == CimType::Datetime;
}

/// One property's values in rows being written: once when all rows share the value, texts packed together, everything
/// else one behind the other.
class RowColumn
{
public:
    explicit RowColumn(CimType type);

    /// Adds the value of the next row.
    void Add(const Variant& value);
    /// Takes back the last value, and a fault with it.
    void TakeBack();
    void Clear();

    /// False after a value that doesn't fit the type or can't travel.
    bool Ok() const { return m_ok && m_values.Ok(); }
    /// At least the bytes and items that Write() writes.
    qsizetype Bytes() const;
    qsizetype Items() const { return 3 + m_values.Items(); }
    void Write(CborWriter* out) const;

private:
    enum class Form { Shared, Texts, Values };

    void Begin(Form form);
    void Append(const Variant& value);
    void AppendText(const QString& text);
    void WriteTexts(CborWriter* out) const;

    CimType m_type;
    Form m_form = Form::Shared;
    bool m_ok = true;
    qsizetype m_rows = 0;
    Variant m_first;
    CborWriter m_values; // with Shared, the one value
    QString m_texts;
    std::vector<qsizetype> m_ends; // of the texts

    // What stood here before the last value.
    Form m_formBefore = Form::Shared;
    qsizetype m_bytesBefore = 0;
    qsizetype m_itemsBefore = 0;
};

} // namespace quenvolta
