#pragma once

#include "snapin/snap_in_item.h"

#include <memory>
#include <vector>

namespace quenvolta
{

using CSnapInItemList = std::vector<std::shared_ptr<CSnapInItem>>;

} // namespace quenvolta
