#pragma once

#include "provider/data_folder.h"
#include "provider/management_class.h"
#include "provider/server_settings_reader.h"
#include "provider/svn/repository_store.h"

namespace quenvolta
{

/// Quenvolta_Repository on true Subversion repositories.
class RepositoryClass final : public ManagementClass
{
public:
    explicit RepositoryClass(DataFolder& data);

    std::optional<InstanceRow> Get(const ClassDefinitionPtr& definition, const Keys& keys,
                                   CallContext& context) override;
    void Enumerate(const ClassDefinitionPtr& definition, CallContext& context) override;

private:
    RepositoryStore Store() const { return RepositoryStore(m_settings.RepositoriesRoot()); }
    InstanceRow Row(const ClassDefinitionPtr& definition, const RepositoryRecord& record,
                    const QString& repositoriesUrl) const;

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
};

} // namespace quenvolta
