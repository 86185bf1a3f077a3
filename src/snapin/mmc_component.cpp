#include "snapin/mmc_component.h"

#include "platform/mmc/image_list.h"
#include "snapin/mmc_component_data.h"
#include "snapin/node_images.h"
#include "snapin/notification_boundary.h"
#include "snapin/root_item.h"

namespace quenvolta
{

namespace
{

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
    return NotifyItem(m_data.Messages(), m_console, object, notification);
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
