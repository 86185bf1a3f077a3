#pragma once

#include "provider/accounts/account_store.h"
#include "provider/management_class.h"

#include <memory>

namespace quenvolta
{

/// Quenvolta_Group: the groups of users and groups that the server keeps itself.
class GroupClass final : public ManagementClass
{
public:
    explicit GroupClass(std::shared_ptr<AccountStore> accounts);

    std::optional<InstanceRow> Get(const ClassDefinitionPtr& definition, const Keys& keys,
                                   CallContext& context) override;
    void Enumerate(const ClassDefinitionPtr& definition, CallContext& context) override;

private:
    void Create(MethodCall& call);
    void Delete(MethodCall& call);
    void SetMembers(MethodCall& call);
    void GetMembers(MethodCall& call);

    std::shared_ptr<AccountStore> m_accounts;
};

} // namespace quenvolta
