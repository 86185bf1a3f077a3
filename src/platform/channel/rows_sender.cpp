#include "platform/channel/rows_sender.h"

#include "platform/channel/frame.h"
#include "platform/channel/object_writer.h"
#include "platform/channel/protocol.h"

#include <utility>

namespace quenvolta
{

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
    , m_columns(*m_shape)
{
    m_head.EnterArray(kRowsMessageLength);
    m_head.Integer(static_cast<std::uint8_t>(MessageKind::Rows));
    WriteRowsHead(&m_head, callId, parameter, *m_shape);
}

bool RowsSender::Add(const QList<Variant>& values)
{
    const std::span row(values.constData(), static_cast<std::size_t>(values.size()));
    if (!m_head.Ok())
        return false;
    if (!m_columns.Add(row, m_head.Items(), m_head.Data().size())) {
        if (m_columns.Rows() == 0)
            return false;
        Flush();
        return Add(values);
    }
    if (m_columns.Rows() >= kRowsPerBatch || m_columns.Bytes() >= kBytesPerBatch)
        Flush();
    return true;
}

void RowsSender::Flush()
{
    if (m_columns.Rows() == 0)
        return;
    CborWriter message = m_head;
    m_columns.Write(&message);
    m_sink(MakeFrame(message.Data()));
    m_columns.Clear();
}

} // namespace quenvolta
