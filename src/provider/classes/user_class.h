#pragma once

#include "provider/accounts/account_store.h"
#include "provider/management_class.h"

#include <memory>

namespace quenvolta
{

/// Quenvolta_User: the users that the server keeps itself.
class UserClass final : public ManagementClass
{
public:
    explicit UserClass(std::shared_ptr<AccountStore> accounts);

    std::optional<InstanceRow> Get(const ClassDefinitionPtr& definition, const Keys& keys,
                                   CallContext& context) override;
    void Enumerate(const ClassDefinitionPtr& definition, CallContext& context) override;

private:
    void Create(MethodCall& call);
    void Delete(MethodCall& call);
    void SetPassword(MethodCall& call);

    std::shared_ptr<AccountStore> m_accounts;
};

} // namespace quenvolta
