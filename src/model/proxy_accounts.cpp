#include "model/server_proxy.h"
#include "wmi/object_paths.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

QStringList CServerProxy::ReadNames(const QString& className)
{
    WMIEnumerator enumerator = m_connection.EnumerateInstances(className);
    QStringList names;
    for (WMIObject object; enumerator.Next(&object);)
        names.append(object.GetString(u"Name"_s));
    return names;
}

QStringList CServerProxy::MemberPaths(const QList<GroupMember>& members) const
{
    QStringList paths;
    paths.reserve(members.size());
    for (const GroupMember& member : members) {
        const WMIClassCache& memberClass = member.kind == GroupMemberKind::Group ? m_classes.group : m_classes.user;
        paths.append(BuildObjectPath(memberClass.ClassName(), member.name));
    }
    return paths;
}

QStringList CServerProxy::GetUsers()
{
    return ReadNames(m_classes.user.ClassName());
}

QStringList CServerProxy::GetGroups()
{
    return ReadNames(m_classes.group.ClassName());
}

void CServerProxy::CreateUser(const QString& name, const QString& password)
{
    ServerCall(m_connection, m_classes.user, u"Create"_s)
        .With(u"Name"_s, name)
        .With(u"Password"_s, password)
        .Run(m_classes.user.ClassName());
}

void CServerProxy::SetPassword(const QString& userName, const QString& password)
{
    ServerCall(m_connection, m_classes.user, u"SetPassword"_s)
        .With(u"Password"_s, password)
        .Run(BuildObjectPath(m_classes.user.ClassName(), userName));
}

void CServerProxy::DeleteUser(const QString& name)
{
    ServerCall(m_connection, m_classes.user, u"Delete"_s).With(u"Name"_s, name).Run(m_classes.user.ClassName());
}

void CServerProxy::CreateGroup(const QString& name, const QList<GroupMember>& members)
{
    ServerCall(m_connection, m_classes.group, u"Create"_s)
        .With(u"Name"_s, name)
        .With(u"Members"_s, MemberPaths(members))
        .Run(m_classes.group.ClassName());
}

QList<GroupMember> CServerProxy::GetGroupMembers(const QString& name)
{
    return m_marshaller.ToGroupMembers(
        m_connection.ExecMethod(BuildObjectPath(m_classes.group.ClassName(), name), u"GetMembers"_s)
            .GetObjectArray(u"Members"_s));
}

void CServerProxy::SetGroupMembers(const QString& name, const QList<GroupMember>& members)
{
    ServerCall(m_connection, m_classes.group, u"SetMembers"_s)
        .With(u"Members"_s, MemberPaths(members))
        .Run(BuildObjectPath(m_classes.group.ClassName(), name));
}

bool CServerProxy::GroupExists(const QString& name)
{
    return !m_connection.GetObject(BuildObjectPath(m_classes.group.ClassName(), name), true).IsEmpty();
}

void CServerProxy::DeleteGroup(const QString& name)
{
    ServerCall(m_connection, m_classes.group, u"Delete"_s).With(u"Name"_s, name).Run(m_classes.group.ClassName());
}

} // namespace quenvolta
