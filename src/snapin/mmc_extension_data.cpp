#include "snapin/mmc_extension_data.h"

#include "platform/mmc/clipboard_format.h"
#include "snapin/extension_items.h"

namespace quenvolta
{

CMMCExtensionData::CMMCExtensionData(const SnapInServices& services)
    : CMMCComponentData(services, true)
{
}

std::shared_ptr<CSnapInItem> CMMCExtensionData::FindItem(const DataObjectPtr& object)
{
    QByteArray type;
    if (!object || Failed(object->GetData(CCF_NODETYPE, &type)))
        return CMMCComponentData::FindItem(object);
    const auto extended = [&](const auto& item) -> std::shared_ptr<CSnapInItem> {
        item->InitDataClass(object); // a failure is answered when the node is expanded
        return item;
    };
    if (type == ClipboardGuid(CCompManagerExtensionItem::kNodeType.id))
        return extended(CompManagerItem());
    if (type == ClipboardGuid(CServerManagerExtensionItem::kNodeType.id))
        return extended(ServerManagerItem());
    return CMMCComponentData::FindItem(object);
}

} // namespace quenvolta
