#pragma once

#include "provider/accounts/account_store.h"
#include "provider/data_folder.h"
#include "provider/management_class.h"
#include "provider/server_settings_reader.h"
#include "provider/svn/repository_store.h"

#include <memory>

namespace quenvolta
{

/// Quenvolta_Repository on true Subversion repositories.
class RepositoryClass final : public ManagementClass
{
public:
    RepositoryClass(DataFolder& data, std::shared_ptr<AccountStore> accounts);

    std::optional<InstanceRow> Get(const ClassDefinitionPtr& definition, const Keys& keys,
                                   CallContext& context) override;
    void Enumerate(const ClassDefinitionPtr& definition, CallContext& context) override;

private:
    RepositoryStore Store() const { return RepositoryStore(m_settings.RepositoriesRoot()); }
    InstanceRow Row(const ClassDefinitionPtr& definition, const RepositoryRecord& record,
                    const QString& repositoriesUrl, const AccountModel& accounts) const;

    /// Removes what is kept for a repository of this name.
    void Forget(const DataLock& lock, const QString& name);

    void Create(MethodCall& call);
    void Rename(MethodCall& call);
    void Delete(MethodCall& call);
    void GetChildren(MethodCall& call);
    void CreateFolders(MethodCall& call);
    void DeleteFolders(MethodCall& call);
    void HasCapability(MethodCall& call);
    void Upgrade(MethodCall& call);

    DataFolder& m_data;
    ServerSettingsReader m_settings;
    std::shared_ptr<AccountStore> m_accounts;
};

} // namespace quenvolta
