#pragma once

#include "platform/hresult.h"
#include "platform/mmc/data_object.h"
#include "platform/mmc/mmc_types.h"

#include <QString>

namespace quenvolta
{

class CMMCComponentData;
class IConsole;

/// The computer of an extended node; empty for the local one. E_UNEXPECTED for a name that is none.
HRESULT ReadMachineName(const DataObjectPtr& object, QString* computer);

/// Manages the computer, and inserts the root below the extended node.
HRESULT ExtendNode(CMMCComponentData& data, IConsole& console, const QString& computer, HSCOPEITEM parent);

} // namespace quenvolta
