#include "snapin/mmc_component.h"

#include "dashboard/status_page.h"
#include "platform/mmc/console.h"
#include "platform/mmc/image_list.h"
#include "snapin/mmc_component_data.h"
#include "snapin/node_images.h"
#include "snapin/notification_boundary.h"
#include "snapin/root_item.h"
#include "snapin/toolbar_resources.h"
#include "ui/help_site.h"
#include "ui/shell.h"

#include <utility>

namespace quenvolta
{

namespace
{

constexpr QStringView kHelpPage = u"/go/2035/";

CSnapInItem& ItemOf(MMC_COOKIE cookie, CRootItem& root)
{
    return cookie != nullptr ? static_cast<CSnapInItem&>(*cookie) : root;
}

HRESULT AddImages(IImageList* images)
{
    if (images == nullptr)
        return E_POINTER;
    for (std::size_t i = 0; i < kImageResources.size(); ++i) {
        const HRESULT result = images->ImageListSetIcon(kImageResources[i], static_cast<int>(i));
        if (Failed(result))
            return result;
    }
    return S_OK;
}

} // namespace

HRESULT CMMCComponent::Initialize(IConsole& console)
{
    m_console = &console;
    return S_OK;
}

HRESULT CMMCComponent::Notify(const DataObjectPtr& object, const MMCNotification& notification)
{
    if (notification.type == MMC_NOTIFY_TYPE::MMCN_ADD_IMAGES)
        return AddImages(notification.imageList);
    const std::shared_ptr<CSnapInItem> item = m_data.FindItem(object);
    if (!item || m_console == nullptr)
        return E_UNEXPECTED;
    return AtBoundary(m_data.Messages(), [&] {
        switch (notification.type) {
        case MMC_NOTIFY_TYPE::MMCN_SNAPINHELP:
        case MMC_NOTIFY_TYPE::MMCN_CONTEXTHELP:
            return ShowHelp();
        default:
            break;
        }
        const HRESULT result = item->Notify(*m_console, notification);
        if (notification.type == MMC_NOTIFY_TYPE::MMCN_SHOW)
            ListenToPage(notification.on ? item : nullptr);
        if (notification.type == MMC_NOTIFY_TYPE::MMCN_VIEW_CHANGE && item == m_selected.lock())
            item->UpdateToolbars(*this);
        return result;
    });
}

HRESULT CMMCComponent::ShowHelp()
{
    m_data.Services().shell.OpenAddress(HelpUrl(kHelpPage.toString()));
    return S_OK;
}

HRESULT CMMCComponent::QueryMultiSelectObject(const QList<MMC_COOKIE>& cookies, DataObjectPtr* object)
{
    return m_data.QueryMultiSelectObject(cookies, object);
}

HRESULT CMMCComponent::AddMenuItems(const DataObjectPtr& object, IContextMenuCallback& callback,
                                    std::uint32_t insertionAllowed)
{
    return m_data.AddMenuItems(object, callback, insertionAllowed);
}

HRESULT CMMCComponent::Command(int command, const DataObjectPtr& object)
{
    return m_data.Command(command, object);
}

HRESULT CMMCComponent::QueryPagesFor(const DataObjectPtr& object)
{
    return m_data.QueryPagesFor(object);
}

HRESULT CMMCComponent::SetControlbar(IControlbar* controlbar)
{
    m_controlbar = controlbar;
    m_toolbars.clear();
    m_attached.clear();
    return S_OK;
}

HRESULT CMMCComponent::ControlbarNotify(const DataObjectPtr& object, const MMCNotification& notification)
{
    if (notification.type == MMC_NOTIFY_TYPE::MMCN_BTN_CLICK)
        return m_data.Command(notification.command, object);
    if (notification.type != MMC_NOTIFY_TYPE::MMCN_SELECT || m_controlbar == nullptr)
        return E_NOTIMPL;
    const std::shared_ptr<CSnapInItem> item = m_data.FindItem(object);
    return QuietlyAtBoundary([&] { return SelectToolbars(notification.on ? item : nullptr); });
}

HRESULT CMMCComponent::SelectToolbars(const std::shared_ptr<CSnapInItem>& item)
{
    m_selected = item;
    const QList<int> wanted = item ? item->Toolbars() : QList<int>();
    if (wanted != m_attached) {
        for (const int resource : std::exchange(m_attached, {}))
            m_controlbar->Detach(*m_toolbars.value(resource));
        for (const int resource : wanted) {
            if (const HRESULT result = AttachToolbar(resource); Failed(result))
                return result;
        }
    }
    if (item)
        item->UpdateToolbars(*this);
    return S_OK;
}

HRESULT CMMCComponent::AttachToolbar(int resource)
{
    IToolbar* toolbar = m_toolbars.value(resource);
    if (toolbar == nullptr) {
        if (const HRESULT result = m_controlbar->Create(LoadString(StringId::kCaption), &toolbar); Failed(result))
            return result;
        for (const MMCBUTTON& button : ToolbarButtons(resource))
            toolbar->AddButton(button);
        m_toolbars.insert(resource, toolbar);
    }
    m_attached.append(resource);
    return m_controlbar->Attach(*toolbar);
}

IcStatusPage* CMMCComponent::Page() const
{
    IResultView* view = nullptr;
    if (m_console == nullptr || Failed(m_console->QueryResultView(&view)))
        return nullptr;
    return dynamic_cast<IcStatusPage*>(view);
}

void CMMCComponent::ListenToPage(const std::shared_ptr<CSnapInItem>& item)
{
    IcStatusPage* page = Page();
    if (page == nullptr)
        return;
    const auto handle = [this, shown = std::weak_ptr(item)](const QString& address) {
        const std::shared_ptr<CSnapInItem> alive = shown.lock();
        auto* node = dynamic_cast<IBaseNode*>(alive.get());
        return node != nullptr && node->HandleCommandLink(address, *m_console);
    };
    page->SetLinkHandler(item ? IcStatusPage::LinkHandler(handle) : IcStatusPage::LinkHandler());
}

void CMMCComponent::RenderPage(IBaseNode& node)
{
    if (IcStatusPage* page = Page())
        node.RenderStatus(*page);
}

HRESULT CMMCComponent::QueryDataObject(MMC_COOKIE cookie, DATA_OBJECT_TYPES type, DataObjectPtr* object)
{
    return m_data.QueryDataObject(cookie, type, object);
}

HRESULT CMMCComponent::GetResultViewType(MMC_COOKIE cookie, QString* viewType)
{
    return ItemOf(cookie, m_data.Root()).GetResultViewType(viewType);
}

HRESULT CMMCComponent::GetDisplayInfo(RESULTDATAITEM* item)
{
    return ItemOf(item->lParam, m_data.Root()).GetResultPaneInfo(item);
}

} // namespace quenvolta
