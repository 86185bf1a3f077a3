#pragma once

#include "platform/hresult.h"
#include "platform/mmc/data_object.h"
#include "platform/mmc/notification.h"
#include "platform/mmc/result_data_item.h"
#include "platform/mmc/scope_data_item.h"

#include <QByteArray>
#include <QString>

#include <memory>

namespace quenvolta
{

class IConsole;

/// An object of the snap-in that the console shows. Data objects share it, so that it outlives the notification in
/// which its parent drops it.
class CSnapInItem : public ISnapInItem, public std::enable_shared_from_this<CSnapInItem>
{
public:
    CSnapInItem() = default;
    CSnapInItem(const CSnapInItem&) = delete;
    CSnapInItem& operator=(const CSnapInItem&) = delete;

    virtual HRESULT Notify(IConsole& console, const MMCNotification& notification) = 0;
    /// Fills what the mask asks.
    virtual HRESULT GetScopePaneInfo(SCOPEDATAITEM* item) = 0;
    virtual HRESULT GetResultViewType(QString* viewType) = 0;
    /// Fills what the mask asks.
    virtual HRESULT GetResultPaneInfo(RESULTDATAITEM* item) = 0;
    /// The description with which the item is inserted into the scope tree.
    virtual SCOPEDATAITEM& GetScopeData() = 0;
    virtual RESULTDATAITEM GetResultData() = 0;
    /// The data of a clipboard format.
    virtual HRESULT FillData(const QString& format, QByteArray* data) const = 0;
    virtual DataObjectPtr GetDataObject(DATA_OBJECT_TYPES type) = 0;
};

} // namespace quenvolta
