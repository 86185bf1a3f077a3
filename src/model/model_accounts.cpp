#include "foundation/com_exception.h"
#include "model/model.h"
#include "model/server_proxy.h"

namespace quenvolta
{

namespace
{

// The server's refusal of members that form a cycle: ERROR_CIRCULAR_DEPENDENCY.
constexpr HRESULT kMembersHaveCycles = HResultFromWin32(1059);

} // namespace

QStringList CModel::GetUsers()
{
    return GetProxy().GetUsers();
}

QStringList CModel::GetGroups()
{
    return GetProxy().GetGroups();
}

UserCreation CModel::CreateUser(const QString& name, const QString& password)
{
    CServerProxy& proxy = GetProxy();
    try {
        proxy.CreateUser(name, password);
    } catch (const ComException& failure) {
        if (failure.Code() == WBEM_E_ALREADY_EXISTS)
            return UserCreation::AlreadyExists;
        throw;
    }
    m_subscribers.Notify(&IcModelEvents::OnUserCreated, name);
    return UserCreation::Created;
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

GroupCreation CModel::CreateGroup(const QString& name, const QList<GroupMember>& members)
{
    CServerProxy& proxy = GetProxy();
    try {
        proxy.CreateGroup(name, members);
    } catch (const ComException& failure) {
        if (failure.Code() == WBEM_E_ALREADY_EXISTS)
            return GroupCreation::AlreadyExists;
        if (failure.Code() == kMembersHaveCycles)
            return GroupCreation::MembersHaveCycles;
        throw;
    }
    m_subscribers.Notify(&IcModelEvents::OnGroupCreated, name);
    return GroupCreation::Created;
}

QList<GroupMember> CModel::GetGroupMembers(const QString& name)
{
    return GetProxy().GetGroupMembers(name);
}

MembershipChange CModel::SetGroupMembers(const QString& name, const QList<GroupMember>& members)
{
    CServerProxy& proxy = GetProxy();
    try {
        proxy.SetGroupMembers(name, members);
    } catch (const ComException& failure) {
        // The code tells of a missing member as well; then the server's own words name it.
        if (failure.Code() == WBEM_E_NOT_FOUND && !proxy.GroupExists(name))
            return MembershipChange::NoSuchGroup;
        if (failure.Code() == kMembersHaveCycles)
            return MembershipChange::MembersHaveCycles;
        throw;
    }
    m_subscribers.Notify(&IcModelEvents::OnGroupMembersChanged, name);
    return MembershipChange::Done;
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
