#pragma once

#include "platform/channel/rows_sender.h"
#include "provider/provider_output.h"
#include "provider/row_sink.h"

#include <optional>

namespace quenvolta
{

/// Sends a call's objects as they come, in batches.
class CallRows final : public RowSink
{
public:
    CallRows(std::uint32_t callId, ProviderOutput& output);

    void AddInstance(const InstanceRow& row) override { Add(std::nullopt, row); }
    void AddElement(const QString& parameter, const InstanceRow& row) override { Add(parameter, row); }

    /// Sends what is left.
    void Flush();

private:
    void Add(const std::optional<QString>& parameter, const InstanceRow& row);

    std::uint32_t m_callId;
    ProviderOutput& m_output;
    std::optional<RowsSender> m_sender;
    std::optional<QString> m_parameter;
    ClassDefinitionPtr m_shape;
};

} // namespace quenvolta
