#pragma once

#include "platform/hresult.h"
#include "platform/mmc/data_object.h"

namespace quenvolta
{

/// What a component implements to have pages in property sheets of the console.
class IExtendPropertySheet
{
public:
    virtual ~IExtendPropertySheet() = default;
    /// S_FALSE for an item whose properties the snap-in shows by itself, or that has none.
    virtual HRESULT QueryPagesFor(const DataObjectPtr& object) = 0;
};

} // namespace quenvolta
