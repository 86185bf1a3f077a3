#pragma once

#include "model/permission_entry.h"

#include <QString>

namespace quenvolta
{

/// "No Access", "Read Only", "Read / Write"; an empty text for a level that the console doesn't know.
QString AccessLevelText(AccessLevel level);

} // namespace quenvolta
