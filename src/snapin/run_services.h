#pragma once

#include "snapin/service_operation.h"

#include <QList>

namespace quenvolta
{

class CModel;

/// Asks the server for the operations one after another. The first failure is an exception, and ends them.
bool RunServices(CModel& model, const QList<ServiceOperation>& operations);

} // namespace quenvolta
