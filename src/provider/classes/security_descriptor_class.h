#pragma once

#include "provider/management_class.h"

namespace quenvolta
{

/// Quenvolta_SecurityDescriptor: one for each object with permissions of its own. Permissions can't be
/// set yet, so there is none.
class SecurityDescriptorClass final : public ManagementClass
{
public:
    std::optional<InstanceRow> Get(const ClassDefinitionPtr& definition, const Keys& keys,
                                   CallContext& context) override;
};

} // namespace quenvolta
