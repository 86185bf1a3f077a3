#pragma once

#include "provider/accounts/account_store.h"
#include "provider/data_folder.h"
#include "provider/management_class.h"
#include "provider/server_settings_reader.h"

#include <memory>

namespace quenvolta
{

/// The methods of Quenvolta_Repository that concern permissions.
class RepositorySecurityMethods
{
public:
    RepositorySecurityMethods(DataFolder& data, std::shared_ptr<AccountStore> accounts);

    void AddTo(ManagementClass& repositories);

    /// Reads and writes the list of a place. WBEM_E_NOT_FOUND when the repository doesn't exist, or the path that
    /// permissions are set on.
    PermissionList Permissions(const SecuredPlace& place) const;
    void SetPermissions(const SecuredPlace& place, const PermissionList& permissions, const CancelCheck& cancel);

private:
    void Return(MethodCall& call, const SecuredPlace& place) const;
    void Set(MethodCall& call, const SecuredPlace& place);

    ServerSettingsReader m_settings;
    std::shared_ptr<AccountStore> m_accounts;
};

} // namespace quenvolta
