#include "platform/channel/row_column.h"

#include "platform/channel/object_writer.h"
#include "platform/channel/protocol.h"

#include <QtEndian>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace quenvolta
{

namespace
{

// The values stand three levels down: in the message, in the list of columns and in their column.
constexpr int kDepth = 3;

// The most that one character takes in UTF-8, and the head of a text.
constexpr qsizetype kMostBytes = 3;
constexpr qsizetype kHeadSize = 9;

bool IsWhole(QStringView text)
{
    return std::none_of(text.begin(), text.end(), [](QChar c) { return c.isSurrogate(); }) || text.isValidUtf16();
}

} // namespace

RowColumn::RowColumn(CimType type)
    : m_type(type)
{
    Clear();
}

void RowColumn::Clear()
{
    m_rows = 0;
    m_ok = true;
    Begin(Form::Shared);
}

void RowColumn::Begin(Form form)
{
    m_form = form;
    m_values.Clear();
    m_values.SetDepth(kDepth);
    m_texts.resize(0);
    m_ends.clear();
}

void RowColumn::Add(const Variant& value)
{
    m_formBefore = m_form;
    if (m_rows++ == 0) {
        m_first = value;
        ObjectWriter(&m_values).Value(m_type, value);
        return;
    }
    if (m_form == Form::Shared) {
        if (value == m_first)
            return;
        Begin(IsPackedType(m_type) ? Form::Texts : Form::Values);
        for (qsizetype row = 1; row < m_rows; ++row)
            Append(m_first);
    }
    Append(value);
}

void RowColumn::TakeBack()
{
    --m_rows;
    m_ok = true;
    if (m_formBefore == Form::Shared) {
        Begin(Form::Shared);
        if (m_rows > 0)
            ObjectWriter(&m_values).Value(m_type, m_first);
    } else if (m_form == Form::Texts) {
        m_ends.pop_back();
        m_texts.resize(m_ends.back());
    } else {
        m_values.RollBack(m_bytesBefore, m_itemsBefore);
    }
}

void RowColumn::Append(const Variant& value)
{
    if (m_form == Form::Texts) {
        if (const auto* const text = std::get_if<QString>(&value)) {
            AppendText(*text);
            return;
        }
        // A null among the texts, or what fails below.
        const QString texts = m_texts;
        const std::vector<qsizetype> ends = m_ends;
        Begin(Form::Values);
        qsizetype begin = 0;
        for (const qsizetype end : ends) {
            m_values.Text(QStringView(texts).sliced(begin, end - begin));
            begin = end;
        }
    }
    m_bytesBefore = m_values.Data().size();
    m_itemsBefore = m_values.Items();
    ObjectWriter(&m_values).Value(m_type, value);
}

void RowColumn::AppendText(const QString& text)
{
    m_ok = m_ok && IsWhole(text);
    m_texts.append(text);
    m_ends.push_back(m_texts.size());
}

qsizetype RowColumn::Bytes() const
{
    return kHeadSize + m_values.Data().size() + kMostBytes * m_texts.size() +
           kHeadSize * static_cast<qsizetype>(m_ends.size());
}

void RowColumn::Write(CborWriter* out) const
{
    if (m_form == Form::Texts) {
        WriteTexts(out);
        return;
    }
    out->EnterArray(m_form == Form::Shared ? std::min<qsizetype>(m_rows, 1) : m_rows);
    out->Append(m_values);
    out->Leave();
}

void RowColumn::WriteTexts(CborWriter* out) const
{
    QByteArray lengths;
    lengths.reserve(kTextLengthSize * static_cast<qsizetype>(m_ends.size()));
    qsizetype begin = 0;
    for (const qsizetype end : m_ends) {
        const auto length = qToBigEndian(static_cast<std::uint32_t>(end - std::exchange(begin, end)));
        lengths.append(reinterpret_cast<const char*>(&length), kTextLengthSize);
    }
    out->EnterArray(2);
    out->Bytes(lengths);
    out->Text(m_texts);
    out->Leave();
}

} // namespace quenvolta
