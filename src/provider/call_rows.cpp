#include "provider/call_rows.h"

#include "provider/provider_error.h"
#include "provider/provider_texts.h"

namespace quenvolta
{

CallRows::CallRows(std::uint32_t callId, ProviderOutput& output)
    : m_callId(callId)
    , m_output(output)
{
}

void CallRows::Flush()
{
    if (m_sender)
        m_sender->Flush();
}

void CallRows::Add(const std::optional<QString>& parameter, const InstanceRow& row)
{
    if (!m_sender || m_parameter != parameter || m_shape != row.Definition()) {
        Flush();
        m_parameter = parameter;
        m_shape = row.Definition();
        m_sender.emplace(m_callId, parameter, m_shape, [this](const QByteArray& frame) { m_output.SendFrame(frame); });
    }
    if (!m_sender->Add(row.Values()))
        throw ProviderError(WBEM_E_FAILED, replies::kRowTooLong.arg(m_shape->name));
}

} // namespace quenvolta
