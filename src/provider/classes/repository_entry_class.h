#pragma once

#include "provider/accounts/account_store.h"
#include "provider/data_folder.h"
#include "provider/management_class.h"
#include "provider/server_settings_reader.h"
#include "provider/svn/svn_repository.h"

#include <memory>

namespace quenvolta
{

/// Quenvolta_RepositoryEntry: folders and files in the youngest revision. They are not enumerated.
class RepositoryEntryClass final : public ManagementClass
{
public:
    RepositoryEntryClass(DataFolder& data, std::shared_ptr<AccountStore> accounts);

    std::optional<InstanceRow> Get(const ClassDefinitionPtr& definition, const Keys& keys,
                                   CallContext& context) override;

private:
    ServerSettingsReader m_settings;
    std::shared_ptr<AccountStore> m_accounts;
};

} // namespace quenvolta
