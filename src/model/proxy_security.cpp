#include "model/server_proxy.h"
#include "wmi/object_paths.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// From this feature level on the repository class has methods for the permissions.
constexpr std::uint32_t kSetSecurityLevel = 1;
constexpr std::uint32_t kGetSecurityLevel = 2;

} // namespace

QString CServerProxy::SecuredObjectPath(const TreePosition& target) const
{
    if (target.repositoryName.isEmpty())
        return ServicePath();
    return target.path == u"/" ? RepositoryPath(target.repositoryName) : EntryPath(target);
}

PermissionList CServerProxy::GetSecurity(const TreePosition& target)
{
    WMIObject holder;
    if (m_featureLevel < kGetSecurityLevel) {
        holder = m_connection.GetObject(BuildObjectPath(m_classes.securityDescriptor.ClassName(),
                                                        {{u"AssociatedObject"_s, SecuredObjectPath(target)}}),
                                        true);
        if (holder.IsEmpty())
            return {};
    } else if (target.repositoryName.isEmpty()) {
        holder = m_connection.ExecMethod(m_classes.repository.ClassName(), u"GetGlobalSecurity"_s);
    } else {
        holder = ServerCall(m_connection, m_classes.repository, u"GetSecurity"_s)
                     .With(u"Path"_s, target.path)
                     .Run(RepositoryPath(target.repositoryName));
    }
    return m_marshaller.ToPermissions(holder.GetObjectArray(u"Permissions"_s));
}

void CServerProxy::SetSecurity(const TreePosition& target, const PermissionList& entries)
{
    const QList<WMIObject> permissions = m_marshaller.ToObjects(entries);
    if (m_featureLevel < kSetSecurityLevel) {
        ServerCall(m_connection, m_classes.securityDescriptor, u"SetSecurity"_s)
            .With(u"Permissions"_s, permissions)
            .With(u"Object"_s, SecuredObjectPath(target))
            .Run(m_classes.securityDescriptor.ClassName());
    } else if (m_featureLevel >= kGetSecurityLevel && target.repositoryName.isEmpty()) {
        ServerCall(m_connection, m_classes.repository, u"SetGlobalSecurity"_s)
            .With(u"Permissions"_s, permissions)
            .Run(m_classes.repository.ClassName());
    } else {
        ServerCall(m_connection, m_classes.repository, u"SetSecurity"_s)
            .With(u"Path"_s, target.path)
            .With(u"Permissions"_s, permissions)
            .Run(RepositoryPath(target.repositoryName));
    }
}

} // namespace quenvolta
