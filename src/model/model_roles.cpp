#include "model/model.h"
#include "model/server_proxy.h"

namespace quenvolta
{

QStringList CModel::GetServerAdmins()
{
    return GetProxy().GetServerAdmins();
}

void CModel::SetServerAdmins(const QStringList& identifiers)
{
    GetProxy().SetServerAdmins(identifiers);
}

QStringList CModel::GetRepositorySupervisors()
{
    return GetProxy().GetRepositorySupervisors();
}

void CModel::SetRepositorySupervisors(const QStringList& identifiers)
{
    GetProxy().SetRepositorySupervisors(identifiers);
}

QStringList CModel::GetReplicationPartners()
{
    return GetProxy().GetReplicationPartners();
}

void CModel::SetReplicationPartners(const QStringList& identifiers)
{
    GetProxy().SetReplicationPartners(identifiers);
}

RoleSettings CModel::GetDelegationSettings(const QString& repositoryName)
{
    return GetProxy().GetDelegationSettings(repositoryName);
}

void CModel::SetDelegationSettings(const QString& repositoryName, const RoleSettings& settings)
{
    GetProxy().SetDelegationSettings(repositoryName, settings);
}

RoleSettings CModel::GetReplicationSettings(const QString& repositoryName)
{
    return GetProxy().GetReplicationSettings(repositoryName);
}

void CModel::SetReplicationSettings(const QString& repositoryName, const RoleSettings& settings)
{
    GetProxy().SetReplicationSettings(repositoryName, settings);
}

} // namespace quenvolta
