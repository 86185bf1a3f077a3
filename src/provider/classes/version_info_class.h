#pragma once

#include "provider/management_class.h"
#include "provider/served_version.h"

namespace quenvolta
{

/// The singleton Quenvolta_VersionInfo: this server's version and those of its parts.
class VersionInfoClass final : public ManagementClass
{
public:
    explicit VersionInfoClass(ServedVersion version);

    std::optional<InstanceRow> Get(const ClassDefinitionPtr& definition, const Keys& keys,
                                   CallContext& context) override;
    void Enumerate(const ClassDefinitionPtr& definition, CallContext& context) override;

private:
    InstanceRow Row(const ClassDefinitionPtr& definition);

    ServedVersion m_version;
};

} // namespace quenvolta
