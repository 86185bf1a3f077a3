#pragma once

#include "platform/hresult.h"
#include "platform/mmc/scope_data_item.h"

namespace quenvolta
{

/// The scope tree. E_INVALIDARG for an item that isn't in it (any more).
class IConsoleNameSpace
{
public:
    virtual ~IConsoleNameSpace() = default;
    /// Inserts an item where its mask and `relativeID` say and gives it its `ID`.
    virtual HRESULT InsertItem(SCOPEDATAITEM* item) = 0;
    /// Removes the item with all below it, or only what is below it.
    virtual HRESULT DeleteItem(HSCOPEITEM item, bool deleteThis) = 0;
    /// Changes what the mask names of the item `ID`; with SDI_STR the name is asked for again.
    virtual HRESULT SetItem(const SCOPEDATAITEM& item) = 0;
};

} // namespace quenvolta
