#include "provider/roles/role_methods.h"

#include "provider/data_lock.h"
#include "provider/provider_error.h"
#include "provider/roles/account_list.h"
#include "provider/server_settings_reader.h"
#include "provider/svn/repository_names.h"
#include "provider/svn/repository_store.h"
#include "provider/svn/repository_texts.h"

#include <utility>

namespace quenvolta::rolemethods
{

using namespace Qt::StringLiterals;

namespace
{

using Effect = ManagementClass::Effect;

void AddServerRole(ManagementClass& target, DataFolder& data, ServerRole role, const QString& subject,
                   const QString& parameter)
{
    target.Handle("Get"_L1 + subject, Effect::Reads, [&data, role, parameter](MethodCall& call) {
        accountlist::Return(call, parameter, RoleLists(data.Settings()).Read(role));
    });
    target.Handle("Set"_L1 + subject, Effect::Changes, [&data, role, parameter](MethodCall& call) {
        const QStringList accounts = accountlist::FromParameter(call, parameter);
        const DataLock lock(data.Path(), call.Context().cancel);
        RoleLists(data.Settings()).Write(role, accounts);
    });
}

// The name of the repository that the method was called on; it is there.
QString RepositoryOf(const MethodCall& call, DataFolder& data)
{
    QString name = call.Key(u"Name"_s);
    if (!RepositoryStore(ServerSettingsReader(data.Settings()).RepositoriesRoot()).Exists(name))
        throw ProviderError(WBEM_E_NOT_FOUND, texts::kRepositoryMissing.toString().arg(RepositoryNames::Show(name)));
    return name;
}

void AddRepositoryRole(ManagementClass& target, DataFolder& data, RepositoryRole role, const QString& subject,
                       const QString& parameter)
{
    target.Handle("Get"_L1 + subject, Effect::Reads, [&data, role, parameter](MethodCall& call) {
        const RepositoryRoleSettings settings = RoleLists(data.Settings()).Read(role, RepositoryOf(call, data));
        call.Return(u"Enabled", settings.enabled);
        accountlist::Return(call, parameter, settings.accounts);
    });
    target.Handle("Set"_L1 + subject, Effect::Changes, [&data, role, parameter](MethodCall& call) {
        const RepositoryRoleSettings settings{call.Bool(u"Enabled"), accountlist::FromParameter(call, parameter)};
        const DataLock lock(data.Path(), call.Context().cancel);
        RoleLists(data.Settings()).Write(role, RepositoryOf(call, data), settings);
    });
}

} // namespace

void AddToService(ManagementClass& service, DataFolder& data)
{
    AddServerRole(service, data, ServerRole::Administrators, u"ServerAdmins"_s, u"Admins"_s);
    AddServerRole(service, data, ServerRole::Supervisors, u"RepositorySupervisors"_s, u"Supervisors"_s);
}

void AddToQdfsService(ManagementClass& service, DataFolder& data)
{
    AddServerRole(service, data, ServerRole::ReplicationPartners, u"ReplicationPartners"_s, u"Partners"_s);
}

void AddToRepository(ManagementClass& repository, DataFolder& data)
{
    AddRepositoryRole(repository, data, RepositoryRole::Managers, u"DelegationSettings"_s, u"Managers"_s);
    AddRepositoryRole(repository, data, RepositoryRole::Replicators, u"ReplicationSettings"_s, u"Replicators"_s);
}

} // namespace quenvolta::rolemethods
