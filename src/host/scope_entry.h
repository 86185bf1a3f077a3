#pragma once

#include "platform/mmc/mmc_types.h"

#include <memory>
#include <vector>

namespace quenvolta
{

/// An item of the scope tree.
struct ScopeEntry {
    HSCOPEITEM id = 0;
    ScopeEntry* parent = nullptr;
    /// Among the parent's children; -1 until it is one of them.
    int row = -1;
    std::vector<std::unique_ptr<ScopeEntry>> children;
    MMC_COOKIE cookie = nullptr;
    int image = 0;
    /// The snap-in said that it never has children.
    bool isLeaf = false;
    /// The snap-in was told to insert the children.
    bool isExpanded = false;
};

} // namespace quenvolta
