#include "snapin/mmc_component_data.h"

#include "snapin/extension_items.h"
#include "snapin/groups_list_node.h"
#include "snapin/mmc_component.h"
#include "snapin/multi_select_item.h"
#include "snapin/notification_boundary.h"
#include "snapin/repositories_list_node.h"
#include "snapin/root_item.h"
#include "snapin/users_list_node.h"
#include "ui/guard.h"

namespace quenvolta
{

CMMCComponentData::CMMCComponentData(const SnapInServices& services, bool extension)
    : m_model(services.locatorFactory, services.preferences, services.updateService)
    , m_services{m_model, services.messages, services.preferences, services.shell, services.dialogs}
    , m_root(std::make_shared<CRootItem>(m_services, extension))
    , m_compManagerItem(std::make_shared<CCompManagerExtensionItem>(*this))
    , m_serverManagerItem(std::make_shared<CServerManagerExtensionItem>(*this))
{
    m_model.Subscribe(*this);
}

CMMCComponentData::~CMMCComponentData()
{
    m_model.Unsubscribe(*this);
}

HRESULT CMMCComponentData::Initialize(IConsole& console)
{
    m_console = &console;
    return S_OK;
}

HRESULT CMMCComponentData::CreateComponent(std::unique_ptr<IComponent>* component)
{
    *component = std::make_unique<CMMCComponent>(*this);
    return S_OK;
}

HRESULT CMMCComponentData::Notify(const DataObjectPtr& object, const MMCNotification& notification)
{
    const std::shared_ptr<CSnapInItem> item = FindItem(object);
    if (!item || m_console == nullptr)
        return E_UNEXPECTED;
    return AtBoundary(Messages(), [&] { return item->Notify(*m_console, notification); });
}

std::shared_ptr<CSnapInItem> CMMCComponentData::FindItem(const DataObjectPtr& object)
{
    if (!object)
        return m_root;
    const auto* ours = dynamic_cast<const CSnapInDataObjectImpl*>(object.get());
    return ours != nullptr ? ours->SharedItem() : nullptr;
}

HRESULT CMMCComponentData::QueryMultiSelectObject(const QList<MMC_COOKIE>& cookies, DataObjectPtr* object)
{
    CSnapInItemList items;
    for (const MMC_COOKIE cookie : cookies) {
        auto* item = dynamic_cast<CSnapInItem*>(cookie);
        if (item == nullptr)
            return E_UNEXPECTED;
        items.push_back(item->shared_from_this());
    }
    if (items.empty())
        return E_INVALIDARG;
    *object =
        std::make_shared<CMultiSelectItem>(m_services, std::move(items))->GetDataObject(DATA_OBJECT_TYPES::CCT_RESULT);
    return S_OK;
}

HRESULT CMMCComponentData::AddMenuItems(const DataObjectPtr& object, IContextMenuCallback& callback,
                                        std::uint32_t insertionAllowed)
{
    const std::shared_ptr<CSnapInItem> item = FindItem(object);
    if (!item)
        return E_UNEXPECTED;
    return QuietlyAtBoundary([&] { return item->AddMenuItems(callback, insertionAllowed); });
}

HRESULT CMMCComponentData::Command(int command, const DataObjectPtr& object)
{
    const std::shared_ptr<CSnapInItem> item = FindItem(object);
    if (!item || m_console == nullptr)
        return E_UNEXPECTED;
    return AtBoundary(Messages(), [&] { return item->Command(*m_console, command); });
}

HRESULT CMMCComponentData::QueryPagesFor(const DataObjectPtr& object)
{
    const std::shared_ptr<CSnapInItem> item = FindItem(object);
    return item ? item->QueryPagesFor() : E_UNEXPECTED;
}

HRESULT CMMCComponentData::QueryDataObject(MMC_COOKIE cookie, DATA_OBJECT_TYPES type, DataObjectPtr* object)
{
    CSnapInItem* item = cookie != nullptr ? dynamic_cast<CSnapInItem*>(cookie) : m_root.get();
    if (item == nullptr)
        return E_UNEXPECTED;
    *object = item->GetDataObject(type);
    return S_OK;
}

HRESULT CMMCComponentData::GetDisplayInfo(SCOPEDATAITEM* item)
{
    CSnapInItem* node = item->lParam != nullptr ? static_cast<CSnapInItem*>(item->lParam) : m_root.get();
    return node->GetScopePaneInfo(item);
}

template <typename Reaction>
void CMMCComponentData::React(Reaction&& reaction)
{
    if (m_console != nullptr)
        Guarded(m_services.messages, [&] { reaction(*m_console); });
}

void CMMCComponentData::OnRepositoryCreated(const QString& name)
{
    React([&](IConsole& console) {
        if (CRepositoriesListNode* repositories = m_root->Repositories())
            repositories->AddRepository(console, name);
    });
    React([&](IConsole& console) {
        m_root->MarkCountsStale();
        m_root->UpdateViews(console);
    });
}

void CMMCComponentData::OnRepositoryDeleted(const QString& name)
{
    React([&](IConsole& console) {
        if (CRepositoriesListNode* repositories = m_root->Repositories())
            repositories->RemoveRepository(console, name);
        m_root->MarkCountsStale();
        m_root->UpdateViews(console);
    });
}

void CMMCComponentData::OnRepositoryConverted(const QString& name)
{
    React([&](IConsole& console) {
        if (CRepositoriesListNode* repositories = m_root->Repositories())
            repositories->ReloadRepository(console, name);
    });
}

void CMMCComponentData::OnSecurityChanged(const TreePosition& target, const PermissionList& entries)
{
    const PermissionState state = entries.isEmpty() ? PermissionState::InheritedOnly : PermissionState::Explicit;
    React([&](IConsole& console) {
        if (CRepositoriesListNode* repositories = m_root->Repositories())
            repositories->UpdatePermissionState(console, target, state);
    });
}

template <typename List, typename Change>
void CMMCComponentData::ChangeAccounts(List* (CRootItem::*list)() const, Change&& change)
{
    React([&](IConsole& console) {
        if (List* accounts = (*m_root.*list)())
            change(*accounts, console);
        m_root->MarkCountsStale();
        m_root->UpdateViews(console);
    });
}

void CMMCComponentData::OnUserCreated(const QString& /*name*/)
{
    ChangeAccounts(&CRootItem::Users, [](CUsersListNode& users, IConsole& console) { users.Reload(console); });
}

void CMMCComponentData::OnUserDeleted(const QString& name)
{
    ChangeAccounts(&CRootItem::Users, [&](CUsersListNode& users, IConsole& console) { users.Remove(console, name); });
}

void CMMCComponentData::OnGroupCreated(const QString& /*name*/)
{
    ChangeAccounts(&CRootItem::Groups, [](CGroupsListNode& groups, IConsole& console) { groups.Reload(console); });
}

void CMMCComponentData::OnGroupDeleted(const QString& name)
{
    ChangeAccounts(&CRootItem::Groups,
                   [&](CGroupsListNode& groups, IConsole& console) { groups.Remove(console, name); });
}

void CMMCComponentData::OnServerSettingsChanged()
{
    Rebuild();
}

void CMMCComponentData::OnComputerChanged()
{
    Rebuild();
}

void CMMCComponentData::OnUpdateStateChanged()
{
    React([this](IConsole& console) { m_root->UpdateViews(console); });
}

void CMMCComponentData::Rebuild()
{
    React([this](IConsole& console) {
        m_root->Rebuild(console);
        m_root->UpdateViews(console);
    });
}

} // namespace quenvolta
