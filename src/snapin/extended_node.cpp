#include "snapin/extended_node.h"

#include "platform/mmc/clipboard_format.h"
#include "platform/mmc/console.h"
#include "platform/mmc/console_name_space.h"
#include "snapin/mmc_component_data.h"
#include "snapin/root_item.h"
#include "snapin/utf16_text.h"

namespace quenvolta
{

namespace
{

constexpr qsizetype kLongestMachineName = 256;

} // namespace

HRESULT ReadMachineName(const DataObjectPtr& object, QString* computer)
{
    QByteArray data;
    if (const HRESULT result = object->GetData(MMC_SNAPIN_MACHINE_NAME, &data); Failed(result))
        return result;
    const std::optional<QString> name = Utf16Text(data);
    if (!name || name->size() > kLongestMachineName)
        return E_UNEXPECTED;
    *computer = *name;
    return S_OK;
}

HRESULT ExtendNode(CMMCComponentData& data, IConsole& console, const QString& computer, HSCOPEITEM parent)
{
    CRootItem& root = data.Root();
    root.Leave();
    data.Model().SetComputer(computer, true); // the root connects when it is expanded, and shows why it can't
    SCOPEDATAITEM& item = root.GetScopeData();
    const std::uint32_t mask = item.mask;
    item.mask |= SDI_PARENT;
    item.relativeID = parent;
    const HRESULT result = console.NameSpace().InsertItem(&item);
    item.mask = mask;
    return result;
}

} // namespace quenvolta
