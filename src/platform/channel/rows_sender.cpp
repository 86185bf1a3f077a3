#include "platform/channel/rows_sender.h"

#include "platform/channel/frame.h"
#include "platform/channel/object_writer.h"
#include "platform/channel/protocol.h"

#include <algorithm>
#include <utility>

namespace quenvolta
{

namespace
{

// The longest head of the array that holds the rows.
constexpr qsizetype kArrayHeadSize = 9;

std::span<const Variant> Span(const QList<Variant>& values)
{
    return {values.constData(), static_cast<std::size_t>(values.size())};
}

} // namespace

void WriteRowsHead(CborWriter* out, std::uint32_t callId, const std::optional<QString>& parameter,
                   const ClassDefinition& shape)
{
    out->Integer(callId);
    if (parameter)
        out->Text(*parameter);
    else
        out->Null();
    ObjectWriter(out).Shape(shape);
}

RowsSender::RowsSender(std::uint32_t callId, const std::optional<QString>& parameter, ClassDefinitionPtr shape,
                       Sink sink)
    : m_shape(std::move(shape))
    , m_sink(std::move(sink))
{
    m_head.EnterArray(5);
    m_head.Integer(static_cast<std::uint8_t>(MessageKind::Rows));
    WriteRowsHead(&m_head, callId, parameter, *m_shape);
}

bool RowsSender::FitsFrame() const
{
    return m_head.Ok() && m_body.Ok() && m_head.Items() + 1 + m_body.Items() <= kMaxItems &&
           m_head.Data().size() + kArrayHeadSize + m_body.Data().size() <= kMaxFrameSize;
}

bool RowsSender::Add(const QList<Variant>& values)
{
    const qsizetype size = m_body.Data().size();
    const qsizetype items = m_body.Items();
    // The rows stand two levels down in the message.
    m_body.SetDepth(2);
    ObjectWriter(&m_body).Values(*m_shape, Span(values), Span(m_last));
    if (!FitsFrame()) {
        m_body.RollBack(size, items);
        if (m_count == 0)
            return false;
        Flush();
        return Add(values);
    }
    ++m_count;
    // The caller's list is not shared: its next row would be a new one then.
    m_last.resize(values.size());
    std::copy(values.cbegin(), values.cend(), m_last.begin());
    if (m_count >= kRowsPerBatch || m_body.Data().size() >= kBytesPerBatch)
        Flush();
    return true;
}

void RowsSender::Flush()
{
    if (m_count == 0)
        return;
    CborWriter head = m_head;
    head.EnterArray(m_count);
    m_sink(MakeFrame(head.Data(), m_body.Data()));
    m_body.Clear();
    m_last.clear();
    m_count = 0;
}

} // namespace quenvolta
