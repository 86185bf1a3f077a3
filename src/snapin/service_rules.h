#pragma once

#include "dashboard/status_snapshot.h"
#include "snapin/service_operation.h"

#include <QList>

namespace quenvolta
{

// What is to be done to the services of a server in the state of the snapshot. Empty when there is nothing to do, and
// while the server can't be managed.
QList<ServiceOperation> OperationsToStart(const CStatusSnapshot& status);
QList<ServiceOperation> OperationsToStop(const CStatusSnapshot& status);
/// The web service is started in any case.
QList<ServiceOperation> OperationsToRestart(const CStatusSnapshot& status);

} // namespace quenvolta
