#include "support/stand_in_server.h"

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

namespace
{

const QString kRepository = u"Quenvolta_Repository"_s;

QStringList ToIdentifiers(const QList<WbemObjectPtr>& accounts)
{
    QStringList identifiers;
    for (const WbemObjectPtr& account : accounts) {
        Variant identifier;
        account->Get(u"SID"_s, &identifier);
        identifiers.append(std::get<QString>(identifier));
    }
    return identifiers;
}

} // namespace

QList<WbemObjectPtr> StandInServer::WindowsAccounts(const QStringList& identifiers) const
{
    QList<WbemObjectPtr> accounts;
    for (const QString& identifier : identifiers)
        accounts.append(Make(u"Quenvolta_WindowsAccount"_s, {{u"SID"_s, identifier}}));
    return accounts;
}

void StandInServer::AddServerRole(const QString& className, const QString& subject, const QString& parameter,
                                  QStringList StandInData::*list)
{
    Handle(className, "Get"_L1 + subject, [this, parameter, list](MethodContext& call) {
        return call.out->Put(parameter, WindowsAccounts(data.*list));
    });
    Handle(className, "Set"_L1 + subject, [this, parameter, list](MethodContext& call) {
        data.*list = ToIdentifiers(call.Objects(parameter));
        return S_OK;
    });
}

void StandInServer::AddRepositoryRole(const QString& subject, const QString& parameter,
                                      StandInRole StandInRepository::*role)
{
    Handle(kRepository, "Get"_L1 + subject, [this, parameter, role](MethodContext& call) {
        const StandInRole& current = data.FindRepository(call.key)->*role;
        call.out->Put(u"Enabled"_s, current.enabled);
        return call.out->Put(parameter, WindowsAccounts(current.accounts));
    });
    Handle(kRepository, "Set"_L1 + subject, [this, parameter, role](MethodContext& call) {
        data.FindRepository(call.key)->*role = {call.Value(u"Enabled"_s) == Variant{true},
                                                ToIdentifiers(call.Objects(parameter))};
        return S_OK;
    });
}

void StandInServer::AddRoleMethods()
{
    AddServerRole(u"Quenvolta_Service"_s, u"ServerAdmins"_s, u"Admins"_s, &StandInData::admins);
    AddServerRole(u"Quenvolta_Service"_s, u"RepositorySupervisors"_s, u"Supervisors"_s, &StandInData::supervisors);
    AddServerRole(u"Quenvolta_QdfsService"_s, u"ReplicationPartners"_s, u"Partners"_s, &StandInData::partners);
    AddRepositoryRole(u"DelegationSettings"_s, u"Managers"_s, &StandInRepository::delegation);
    AddRepositoryRole(u"ReplicationSettings"_s, u"Replicators"_s, &StandInRepository::replication);
}

void StandInServer::AddHookMethods()
{
    Handle(kRepository, u"GetHook"_s, [this](MethodContext& call) {
        const QMap<int, QString>& hooks = data.FindRepository(call.key)->hooks;
        const int kind = call.Number(u"Kind"_s);
        call.out->Put(u"Hook"_s, hooks.value(kind, u""_s));
        return call.out->Put(u"ReturnValue"_s, hooks.contains(kind));
    });
    Handle(kRepository, u"SetHook"_s, [this](MethodContext& call) {
        data.FindRepository(call.key)->hooks.insert(call.Number(u"Kind"_s), call.Text(u"Hook"_s));
        return S_OK;
    });
    Handle(kRepository, u"DeleteHook"_s, [this](MethodContext& call) {
        data.FindRepository(call.key)->hooks.remove(call.Number(u"Kind"_s));
        return S_OK;
    });
}

} // namespace quenvolta::test
