#pragma once

#include "platform/hresult.h"
#include "platform/mmc/context_menu.h"
#include "platform/mmc/data_object.h"
#include "platform/mmc/notification.h"
#include "platform/mmc/result_data_item.h"
#include "platform/mmc/scope_data_item.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <memory>

namespace quenvolta
{

class IConsole;
class IQuenvoltaComponent;

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
    /// Adds the commands of the item at the insertion points that are allowed.
    virtual HRESULT AddMenuItems(IContextMenuCallback& callback, std::uint32_t insertionAllowed) = 0;
    /// Runs a command; S_FALSE for one that the item doesn't know, or that is disabled now.
    virtual HRESULT Command(IConsole& console, int command) = 0;
    /// S_OK when the item has pages for a property sheet of the console.
    virtual HRESULT QueryPagesFor() = 0;
    /// The resource numbers of the item's toolbars, in their order.
    virtual QList<int> Toolbars() const = 0;
    /// Gives the buttons of the item's toolbars their states.
    virtual void UpdateToolbars(IQuenvoltaComponent& component) = 0;
    /// Fills what the mask asks.
    virtual HRESULT GetResultPaneInfo(RESULTDATAITEM* item) = 0;
    /// The description with which the item is inserted into the scope tree.
    virtual SCOPEDATAITEM& GetScopeData() = 0;
    virtual RESULTDATAITEM GetResultData() = 0;
    /// The data of a clipboard format.
    virtual HRESULT FillData(const QString& format, QByteArray* data) const = 0;
    virtual DataObjectPtr GetDataObject(DATA_OBJECT_TYPES type) = 0;

    // For items that are selected together.
    virtual bool HasAddress() const { return false; }
    virtual QString Address() { return {}; }
    /// The number of the question before several such items are deleted; 0 when only one at a time is.
    virtual int DeleteSeveralQuestion() const { return 0; }
    /// Deletes the item without a question.
    virtual void DeleteUnasked() {}
};

} // namespace quenvolta
