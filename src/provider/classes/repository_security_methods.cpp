#include "provider/classes/repository_security_methods.h"

#include "provider/classes/permission_objects.h"
#include "provider/provider_error.h"
#include "provider/svn/repository_names.h"
#include "provider/svn/repository_store.h"
#include "provider/svn/repository_texts.h"

#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// A repository without a name stands for the server: an older console sets the server's own list so.
SecuredPlace PlaceOf(const MethodCall& call)
{
    const QString repository = call.Key(u"Name"_s);
    return repository.isEmpty() ? SecuredPlace{} : SecuredPlace{repository, call.String(u"Path")};
}

} // namespace

RepositorySecurityMethods::RepositorySecurityMethods(DataFolder& data, std::shared_ptr<AccountStore> accounts)
    : m_settings(data.Settings())
    , m_accounts(std::move(accounts))
{
}

void RepositorySecurityMethods::AddTo(ManagementClass& repositories)
{
    using Effect = ManagementClass::Effect;
    repositories.Handle(u"GetSecurity"_s, Effect::Reads, [this](MethodCall& call) { Return(call, PlaceOf(call)); });
    repositories.Handle(u"SetSecurity"_s, Effect::Changes, [this](MethodCall& call) { Set(call, PlaceOf(call)); });
    repositories.Handle(u"GetGlobalSecurity"_s, Effect::Reads, [this](MethodCall& call) { Return(call, {}); });
    repositories.Handle(u"SetGlobalSecurity"_s, Effect::Changes, [this](MethodCall& call) { Set(call, {}); });
}

PermissionList RepositorySecurityMethods::Permissions(const SecuredPlace& place) const
{
    if (!place.IsServer()) {
        RepositoryNames::CheckPath(place.path);
        if (!RepositoryStore(m_settings.RepositoriesRoot()).Exists(place.repository))
            throw ProviderError(WBEM_E_NOT_FOUND,
                                texts::kRepositoryMissing.toString().arg(RepositoryNames::Show(place.repository)));
    }
    return m_accounts->Read()->Permissions(place);
}

void RepositorySecurityMethods::SetPermissions(const SecuredPlace& place, const PermissionList& permissions,
                                               const CancelCheck& cancel)
{
    Permissions(place);
    m_accounts->Change(cancel, [&](AccountModel& model) {
        // Looked up with the lock held. The root needs no opening: a repository that can't be opened is protected too.
        if (!place.IsServer() && place.path != "/"_L1 && !permissions.isEmpty())
            RepositoryStore(m_settings.RepositoriesRoot()).Entry(place.repository, place.path);
        model.SetPermissions(place, permissions);
    });
}

void RepositorySecurityMethods::Return(MethodCall& call, const SecuredPlace& place) const
{
    const PermissionObjects objects(call.Context().classes);
    const QString parameter = u"Permissions"_s;
    for (const Permission& permission : Permissions(place))
        call.ReturnElement(parameter, objects.ToRow(permission));
}

void RepositorySecurityMethods::Set(MethodCall& call, const SecuredPlace& place)
{
    const QList<WbemObjectPtr> objects = call.ObjectArray(u"Permissions");
    SetPermissions(place, PermissionObjects::FromObjects(objects, place), call.Context().cancel);
}

} // namespace quenvolta
