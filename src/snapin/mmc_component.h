#pragma once

#include "platform/mmc/component.h"
#include "platform/mmc/context_menu.h"
#include "platform/mmc/controlbar.h"
#include "platform/mmc/extend_property_sheet.h"
#include "snapin/quenvolta_component.h"

#include <QHash>

#include <memory>

namespace quenvolta
{

class CMMCComponentData;
class CSnapInItem;
class IcStatusPage;

/// The snap-in in one view.
class CMMCComponent final : public IComponent,
                            public IExtendContextMenu,
                            public IExtendControlbar,
                            public IExtendPropertySheet,
                            private IQuenvoltaComponent
{
public:
    explicit CMMCComponent(CMMCComponentData& data)
        : m_data(data)
    {
    }

    HRESULT Initialize(IConsole& console) override;
    HRESULT Notify(const DataObjectPtr& object, const MMCNotification& notification) override;
    HRESULT QueryDataObject(MMC_COOKIE cookie, DATA_OBJECT_TYPES type, DataObjectPtr* object) override;
    HRESULT QueryMultiSelectObject(const QList<MMC_COOKIE>& cookies, DataObjectPtr* object) override;
    HRESULT GetResultViewType(MMC_COOKIE cookie, QString* viewType) override;
    HRESULT GetDisplayInfo(RESULTDATAITEM* item) override;

    HRESULT AddMenuItems(const DataObjectPtr& object, IContextMenuCallback& callback,
                         std::uint32_t insertionAllowed) override;
    HRESULT Command(int command, const DataObjectPtr& object) override;
    HRESULT SetControlbar(IControlbar* controlbar) override;
    HRESULT ControlbarNotify(const DataObjectPtr& object, const MMCNotification& notification) override;
    HRESULT QueryPagesFor(const DataObjectPtr& object) override;

private:
    IToolbar* GetToolbar(int resource) override { return m_toolbars.value(resource); }
    void RenderPage(IBaseNode& node) override;
    IConsole* GetConsole() const override { return m_console; }

    /// Null while the view shows something else.
    IcStatusPage* Page() const;
    /// Has the links of the page run by the item; by nobody for null.
    void ListenToPage(const std::shared_ptr<CSnapInItem>& item);
    HRESULT ShowHelp();
    HRESULT SelectToolbars(const std::shared_ptr<CSnapInItem>& item);
    HRESULT AttachToolbar(int resource);

    CMMCComponentData& m_data;
    IConsole* m_console = nullptr;
    IControlbar* m_controlbar = nullptr;
    QHash<int, IToolbar*> m_toolbars;
    QList<int> m_attached;
    std::weak_ptr<CSnapInItem> m_selected;
};

} // namespace quenvolta
