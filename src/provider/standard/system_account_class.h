#pragma once

#include "provider/management_class.h"
#include "provider/standard/account_database.h"

#include <memory>

namespace quenvolta
{

/// Win32_UserAccount and Win32_Group: the accounts of one of the system's databases; their domain is this computer.
class SystemAccountClass final : public ManagementClass
{
public:
    explicit SystemAccountClass(std::unique_ptr<AccountDatabase> accounts);

    std::optional<InstanceRow> Get(const ClassDefinitionPtr& definition, const Keys& keys,
                                   CallContext& context) override;
    void Enumerate(const ClassDefinitionPtr& definition, CallContext& context) override;

private:
    std::unique_ptr<AccountDatabase> m_accounts;
};

} // namespace quenvolta
