#include "model/model.h"
#include "model/server_proxy.h"

namespace quenvolta
{

QStringList CModel::GetUsers()
{
    return GetProxy().GetUsers();
}

QStringList CModel::GetGroups()
{
    return GetProxy().GetGroups();
}

void CModel::CreateUser(const QString& name, const QString& password)
{
    GetProxy().CreateUser(name, password);
    m_subscribers.Notify(&IcModelEvents::OnUserCreated, name);
}

void CModel::SetPassword(const QString& userName, const QString& password)
{
    GetProxy().SetPassword(userName, password);
}

void CModel::DeleteUser(const QString& name)
{
    GetProxy().DeleteUser(name);
    m_subscribers.Notify(&IcModelEvents::OnUserDeleted, name);
}

void CModel::CreateGroup(const QString& name, const QList<GroupMember>& members)
{
    GetProxy().CreateGroup(name, members);
    m_subscribers.Notify(&IcModelEvents::OnGroupCreated, name);
}

QList<GroupMember> CModel::GetGroupMembers(const QString& name)
{
    return GetProxy().GetGroupMembers(name);
}

void CModel::SetGroupMembers(const QString& name, const QList<GroupMember>& members)
{
    GetProxy().SetGroupMembers(name, members);
    m_subscribers.Notify(&IcModelEvents::OnGroupMembersChanged, name);
}

void CModel::DeleteGroup(const QString& name)
{
    GetProxy().DeleteGroup(name);
    m_subscribers.Notify(&IcModelEvents::OnGroupDeleted, name);
}

PermissionList CModel::GetSecurity(const TreePosition& target)
{
    return GetProxy().GetSecurity(target);
}

void CModel::SetSecurity(const TreePosition& target, const PermissionList& entries)
{
    GetProxy().SetSecurity(target, entries);
    m_subscribers.Notify(&IcModelEvents::OnSecurityChanged, target, entries);
}

} // namespace quenvolta
