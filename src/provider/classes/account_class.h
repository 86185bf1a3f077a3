#pragma once

#include "provider/management_class.h"

namespace quenvolta
{

/// Quenvolta_User and Quenvolta_Group. Accounts can't be made yet, so a server has none.
class AccountClass final : public ManagementClass
{
public:
    std::optional<InstanceRow> Get(const ClassDefinitionPtr& definition, const Keys& keys,
                                   CallContext& context) override;
    void Enumerate(const ClassDefinitionPtr& definition, CallContext& context) override;
};

} // namespace quenvolta
