#pragma once

#include "provider/management_class.h"

namespace quenvolta
{

/// Win32_NetworkAdapterConfiguration: one instance for each network interface, with the addresses at which other
/// computers can reach it; null when it has none. The loopback's addresses are not told: every console knows them.
class NetworkAdapterClass final : public ManagementClass
{
public:
    std::optional<InstanceRow> Get(const ClassDefinitionPtr& definition, const Keys& keys,
                                   CallContext& context) override;
    void Enumerate(const ClassDefinitionPtr& definition, CallContext& context) override;
};

} // namespace quenvolta
