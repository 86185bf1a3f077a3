#pragma once

#include "provider/data_lock.h"
#include "provider/web/web_folder.h"

namespace quenvolta
{

/// Removes the staged files of processes that ended before they put them in place. To be called at the start. Those of
/// a start or stop that is under way in another process stay.
void RemoveWebLeftovers(const WebFolder& folder, const DataLock& lock);

} // namespace quenvolta
