#pragma once

#include "platform/hresult.h"
#include "platform/mmc/result_data_item.h"

namespace quenvolta
{

/// The result list. The scope items below the selected one are in it without being inserted.
class IResultData
{
public:
    virtual ~IResultData() = default;
    /// Appends an item and gives it its `itemID`.
    virtual HRESULT InsertItem(RESULTDATAITEM* item) = 0;
    /// Removes an inserted item.
    virtual HRESULT DeleteItem(HRESULTITEM item) = 0;
    /// Removes the inserted items.
    virtual HRESULT DeleteAllRsltItems() = 0;
    /// The text beside the item's name above the result pane.
    virtual HRESULT SetDescBarText(const QString& text) = 0;
};

} // namespace quenvolta
