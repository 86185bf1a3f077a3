#pragma once

#include "platform/hresult.h"
#include "platform/mmc/data_object.h"
#include "platform/mmc/mmc_types.h"
#include "platform/mmc/notification.h"
#include "platform/mmc/result_data_item.h"

#include <QList>
#include <QString>

namespace quenvolta
{

class IConsole;

/// A snap-in's object for one view. No exception leaves it.
class IComponent
{
public:
    virtual ~IComponent() = default;
    virtual HRESULT Initialize(IConsole& console) = 0;
    /// `object` is empty for notifications that are about the whole view.
    virtual HRESULT Notify(const DataObjectPtr& object, const MMCNotification& notification) = 0;
    virtual HRESULT QueryDataObject(MMC_COOKIE cookie, DATA_OBJECT_TYPES type, DataObjectPtr* object) = 0;
    /// One object for several items that are selected together.
    virtual HRESULT QueryMultiSelectObject(const QList<MMC_COOKIE>& cookies, DataObjectPtr* object) = 0;
    /// What the result pane is to show for a scope item: see result_view_type.h.
    virtual HRESULT GetResultViewType(MMC_COOKIE cookie, QString* viewType) = 0;
    /// Fills what the mask asks of the item `lParam`.
    virtual HRESULT GetDisplayInfo(RESULTDATAITEM* item) = 0;
};

} // namespace quenvolta
