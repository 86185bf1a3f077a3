#include "model/server_proxy.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

QStringList CServerProxy::ReadAccounts(const QString& path, const QString& method, const QString& parameter)
{
    return AccountMarshaller::ToIdentifiers(m_connection.ExecMethod(path, method).GetObjectArray(parameter));
}

void CServerProxy::WriteAccounts(const QString& path, IcWMIClassRef& classRef, const QString& method,
                                 const QString& parameter, const QStringList& identifiers)
{
    ServerCall(m_connection, classRef, method).With(parameter, m_marshaller.ToWindowsAccounts(identifiers)).Run(path);
}

RoleSettings CServerProxy::ReadRole(const QString& repositoryName, const QString& method, const QString& parameter)
{
    const WMIObject out = m_connection.ExecMethod(RepositoryPath(repositoryName), method);
    return {out.GetBool(u"Enabled"_s), AccountMarshaller::ToIdentifiers(out.GetObjectArray(parameter))};
}

void CServerProxy::WriteRole(const QString& repositoryName, const QString& method, const QString& parameter,
                             const RoleSettings& settings)
{
    ServerCall(m_connection, m_classes.repository, method)
        .With(u"Enabled"_s, settings.enabled)
        .With(parameter, m_marshaller.ToWindowsAccounts(settings.accounts))
        .Run(RepositoryPath(repositoryName));
}

QStringList CServerProxy::GetServerAdmins()
{
    return ReadAccounts(ServicePath(), u"GetServerAdmins"_s, u"Admins"_s);
}

void CServerProxy::SetServerAdmins(const QStringList& identifiers)
{
    WriteAccounts(ServicePath(), m_classes.service, u"SetServerAdmins"_s, u"Admins"_s, identifiers);
}

QStringList CServerProxy::GetRepositorySupervisors()
{
    return ReadAccounts(ServicePath(), u"GetRepositorySupervisors"_s, u"Supervisors"_s);
}

void CServerProxy::SetRepositorySupervisors(const QStringList& identifiers)
{
    WriteAccounts(ServicePath(), m_classes.service, u"SetRepositorySupervisors"_s, u"Supervisors"_s, identifiers);
}

QStringList CServerProxy::GetReplicationPartners()
{
    return ReadAccounts(QdfsServicePath(), u"GetReplicationPartners"_s, u"Partners"_s);
}

void CServerProxy::SetReplicationPartners(const QStringList& identifiers)
{
    WriteAccounts(QdfsServicePath(), m_classes.qdfsService, u"SetReplicationPartners"_s, u"Partners"_s, identifiers);
}

RoleSettings CServerProxy::GetDelegationSettings(const QString& repositoryName)
{
    return ReadRole(repositoryName, u"GetDelegationSettings"_s, u"Managers"_s);
}

void CServerProxy::SetDelegationSettings(const QString& repositoryName, const RoleSettings& settings)
{
    WriteRole(repositoryName, u"SetDelegationSettings"_s, u"Managers"_s, settings);
}

RoleSettings CServerProxy::GetReplicationSettings(const QString& repositoryName)
{
    return ReadRole(repositoryName, u"GetReplicationSettings"_s, u"Replicators"_s);
}

void CServerProxy::SetReplicationSettings(const QString& repositoryName, const RoleSettings& settings)
{
    WriteRole(repositoryName, u"SetReplicationSettings"_s, u"Replicators"_s, settings);
}

} // namespace quenvolta
