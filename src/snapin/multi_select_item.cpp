#include "snapin/multi_select_item.h"

#include "platform/mmc/clipboard_format.h"
#include "platform/mmc/console.h"
#include "platform/mmc/console_verb.h"
#include "snapin/command_id.h"
#include "snapin/dialogs.h"
#include "snapin/menu_resources.h"
#include "snapin/snap_in_data_object_impl.h"
#include "snapin/users_check.h"
#include "ui/messages.h"
#include "ui/shell.h"

#include <algorithm>

namespace quenvolta
{

CMultiSelectItem::CMultiSelectItem(const NodeServices& services, CSnapInItemList items)
    : m_services(services)
    , m_items(std::move(items))
{
}

HRESULT CMultiSelectItem::Notify(IConsole& console, const MMCNotification& notification)
{
    switch (notification.type) {
    case MMC_NOTIFY_TYPE::MMCN_SELECT:
        return notification.on ? Select(console) : S_OK;
    case MMC_NOTIFY_TYPE::MMCN_DELETE:
        return Delete();
    default:
        return E_NOTIMPL;
    }
}

HRESULT CMultiSelectItem::Select(IConsole& console) const
{
    IConsoleVerb* verb = nullptr;
    const HRESULT result = console.QueryConsoleVerb(&verb);
    if (Succeeded(result) && DeleteSeveralQuestion() != 0)
        verb->SetVerbState(MMC_CONSOLE_VERB::MMC_VERB_DELETE, MMC_BUTTON_STATE::ENABLED, true);
    return result;
}

int CMultiSelectItem::DeleteSeveralQuestion() const
{
    const int question = m_items.front()->DeleteSeveralQuestion();
    const bool same =
        std::ranges::all_of(m_items, [&](const auto& item) { return item->DeleteSeveralQuestion() == question; });
    return same ? question : 0;
}

HRESULT CMultiSelectItem::Delete()
{
    const int question = DeleteSeveralQuestion();
    if (question == 0)
        return E_NOTIMPL;
    if (m_services.messages.ShowMessage({MessageIcon::Question, MessageButtons::YesNo}, question,
                                        static_cast<qint64>(m_items.size())) != MessageAnswer::Yes)
        return S_FALSE;
    for (const auto& item : m_items)
        item->DeleteUnasked();
    return S_OK;
}

HRESULT CMultiSelectItem::GetScopePaneInfo(SCOPEDATAITEM* item)
{
    return m_items.front()->GetScopePaneInfo(item);
}

HRESULT CMultiSelectItem::GetResultViewType(QString* viewType)
{
    return m_items.front()->GetResultViewType(viewType);
}

HRESULT CMultiSelectItem::GetResultPaneInfo(RESULTDATAITEM* item)
{
    return m_items.front()->GetResultPaneInfo(item);
}

HRESULT CMultiSelectItem::AddMenuItems(IContextMenuCallback& callback, std::uint32_t insertionAllowed)
{
    if (!HaveAddresses())
        return S_OK;
    return AddMenuResource(MenuId::kSeveralEntries, insertionAllowed, callback,
                           [](int /*command*/) { return CommandState::Enabled; });
}

HRESULT CMultiSelectItem::Command(IConsole& console, int command)
{
    if (command != CommandId::kCopyUrl || !HaveAddresses())
        return S_FALSE;
    if (CheckForUsers(m_services, {m_services.model, m_services.messages, m_services.preferences, m_services.shell,
                                   console.GetMainWindow()}))
        m_services.shell.CopyText(Addresses().join(u'\n'));
    return S_OK;
}

HRESULT CMultiSelectItem::FillData(const QString& format, QByteArray* data) const
{
    if (format != CCF_MMC_MULTISELECT_DATAOBJECT)
        return m_items.front()->FillData(format, data);
    *data = QByteArray("\1\0\0\0", 4);
    return S_OK;
}

DataObjectPtr CMultiSelectItem::GetDataObject(DATA_OBJECT_TYPES type)
{
    return std::make_shared<CSnapInDataObjectImpl>(shared_from_this(), type);
}

bool CMultiSelectItem::HaveAddresses() const
{
    return std::ranges::all_of(m_items, [](const auto& item) { return item->HasAddress(); });
}

QStringList CMultiSelectItem::Addresses() const
{
    QStringList addresses;
    for (const auto& item : m_items)
        addresses.append(item->Address());
    return addresses;
}

} // namespace quenvolta
