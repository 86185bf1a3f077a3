#include "foundation/guid.h"
#include "model/server_proxy.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

struct ActivityIdentity {
    QString id = GuidToString(NewGuid());
    WbemContextPtr context = WMIConnection::CreateContext();

    ActivityIdentity() { WMIConnection::SetContextValue(context, u"ActivityId"_s, id); }
};

StartedActivity Start(const ServerCall& call, const QString& target)
{
    const ActivityIdentity identity;
    return {identity.id, call.Start(target, identity.context)};
}

} // namespace

StartedActivity CServerProxy::ImportRepository(const QString& name, const QString& importPath, std::int32_t importMode)
{
    ServerCall call(m_connection, m_classes.repository, u"ImportRepository"_s);
    call.With(u"Name"_s, name).With(u"ImportPath"_s, importPath);
    if (importMode != 0) // servers before 3.2 know no other mode
        call.With(u"ImportMode"_s, importMode);
    return Start(call, m_classes.repository.ClassName());
}

StartedActivity CServerProxy::ImportQdfsMaster(const QString& name, const QString& importPath, bool permissions,
                                               bool delegation, bool hooks)
{
    return Start(ServerCall(m_connection, m_classes.repository, u"ImportQdfsMaster"_s)
                     .With(u"Name"_s, name)
                     .With(u"ImportPath"_s, importPath)
                     .With(u"ImportPermissions"_s, permissions)
                     .With(u"ImportDelegation"_s, delegation)
                     .With(u"ImportHooks"_s, hooks),
                 m_classes.repository.ClassName());
}

StartedActivity CServerProxy::CheckReplicationConsistency(const QString& name)
{
    const ActivityIdentity identity;
    return {identity.id,
            m_connection.ExecMethodAsync(RepositoryPath(name), u"CheckReplicationConsistency"_s, {}, identity.context)};
}

StartedActivity CServerProxy::ExportReplicationSeed(const QString& name, const QString& destinationPath)
{
    return Start(ServerCall(m_connection, m_classes.repository, u"ExportReplicationSeed"_s)
                     .With(u"DestinationPath"_s, destinationPath),
                 RepositoryPath(name));
}

void CServerProxy::CancelActivity(const QString& activityId)
{
    ServerCall(m_connection, m_classes.activity, u"Cancel"_s)
        .With(u"Id"_s, activityId)
        .Run(m_classes.activity.ClassName());
}

} // namespace quenvolta
