#include "model/async_call_monitor.h"
#include "model/model.h"
#include "model/remote_activity.h"
#include "model/server_proxy.h"

#include <utility>

namespace quenvolta
{

void CModel::RunActivity(StartedActivity started, IcAsyncCallMonitor& monitor)
{
    CRemoteActivity activity(*this, std::move(started));
    monitor.Run(activity);
}

void CModel::ImportRepository(const QString& name, const QString& importPath, std::int32_t importMode,
                              IcAsyncCallMonitor& monitor)
{
    RunActivity(GetProxy().ImportRepository(name, importPath, importMode), monitor);
    m_subscribers.Notify(&IcModelEvents::OnRepositoryCreated, name);
}

void CModel::ImportQdfsMaster(const QString& name, const QString& importPath, bool permissions, bool delegation,
                              bool hooks, IcAsyncCallMonitor& monitor)
{
    RunActivity(GetProxy().ImportQdfsMaster(name, importPath, permissions, delegation, hooks), monitor);
    m_subscribers.Notify(&IcModelEvents::OnRepositoryCreated, name);
}

void CModel::CheckReplicationConsistency(const QString& name, IcAsyncCallMonitor& monitor)
{
    RunActivity(GetProxy().CheckReplicationConsistency(name), monitor);
}

void CModel::ExportReplicationSeed(const QString& name, const QString& destinationPath, IcAsyncCallMonitor& monitor)
{
    RunActivity(GetProxy().ExportReplicationSeed(name, destinationPath), monitor);
}

void CModel::CancelActivity(const QString& activityId)
{
    GetProxy().CancelActivity(activityId);
}

} // namespace quenvolta
