#pragma once

#include "platform/hresult.h"
#include "platform/mmc/data_object.h"
#include "platform/mmc/notification.h"

namespace quenvolta
{

class IConsole;
class IcMessages;

/// Hands a notification to the item behind the data object. What the item throws is shown and becomes E_FAIL;
/// E_UNEXPECTED for an object that isn't of this snap-in.
HRESULT NotifyItem(IcMessages& messages, IConsole* console, const DataObjectPtr& object,
                   const MMCNotification& notification);

} // namespace quenvolta
