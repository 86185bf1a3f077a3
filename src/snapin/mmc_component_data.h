#pragma once

#include "foundation/preferences.h"
#include "model/model.h"
#include "platform/mmc/component_data.h"
#include "platform/mmc/context_menu.h"
#include "platform/mmc/extend_property_sheet.h"
#include "snapin/dialogs.h"
#include "snapin/node_services.h"
#include "snapin/snap_in_item.h"
#include "ui/desktop_shell.h"
#include "ui/messages.h"

#include <memory>

namespace quenvolta
{

class CCompManagerExtensionItem;
class CRootItem;
class CServerManagerExtensionItem;

/// What the snap-in works with; it outlives the snap-in.
struct SnapInServices {
    WbemLocatorFactory locatorFactory;
    IcPreferences& preferences;
    IcMessages& messages;
    const IcShell& shell = CDesktopShell::Instance();
    const DialogTable& dialogs = DialogTable::BuiltIn();
    UpdateService updateService = {};
};

/// The snap-in in one console: the model of the managed server, the root of the tree, and what the tree does when the
/// model tells of a change.
class CMMCComponentData : public IComponentData,
                          public IExtendContextMenu,
                          public IExtendPropertySheet,
                          private IcModelEvents
{
public:
    ~CMMCComponentData() override;
    CMMCComponentData(const CMMCComponentData&) = delete;
    CMMCComponentData& operator=(const CMMCComponentData&) = delete;

    HRESULT Initialize(IConsole& console) override;
    HRESULT CreateComponent(std::unique_ptr<IComponent>* component) override;
    HRESULT Notify(const DataObjectPtr& object, const MMCNotification& notification) override;
    HRESULT QueryDataObject(MMC_COOKIE cookie, DATA_OBJECT_TYPES type, DataObjectPtr* object) override;
    HRESULT GetDisplayInfo(SCOPEDATAITEM* item) override;

    HRESULT AddMenuItems(const DataObjectPtr& object, IContextMenuCallback& callback,
                         std::uint32_t insertionAllowed) override;
    HRESULT Command(int command, const DataObjectPtr& object) override;
    HRESULT QueryPagesFor(const DataObjectPtr& object) override;

    /// The item that a data object stands for; null for an object that isn't of this snap-in.
    virtual std::shared_ptr<CSnapInItem> FindItem(const DataObjectPtr& object);
    /// One object for several items.
    HRESULT QueryMultiSelectObject(const QList<MMC_COOKIE>& cookies, DataObjectPtr* object);

    CModel& Model() { return m_model; }
    const QString& ManagedComputer() const { return m_model.ComputerName(); }
    const NodeServices& Services() const { return m_services; }
    CRootItem& Root() { return *m_root; }
    IcMessages& Messages() { return m_services.messages; }

protected:
    /// `extension`: below another snap-in's node instead of standing alone.
    CMMCComponentData(const SnapInServices& services, bool extension);

    const std::shared_ptr<CCompManagerExtensionItem>& CompManagerItem() const { return m_compManagerItem; }
    const std::shared_ptr<CServerManagerExtensionItem>& ServerManagerItem() const { return m_serverManagerItem; }
    void OnComputerChanged() override;

private:
    void OnRepositoryCreated(const QString& name) override;
    void OnRepositoryDeleted(const QString& name) override;
    void OnRepositoryConverted(const QString& name) override;
    void OnSecurityChanged(const TreePosition& target, const PermissionList& entries) override;
    void OnUserCreated(const QString& name) override;
    void OnUserDeleted(const QString& name) override;
    void OnGroupCreated(const QString& name) override;
    void OnGroupDeleted(const QString& name) override;
    void OnServerSettingsChanged() override;
    void OnUpdateStateChanged() override;

    /// Runs a reaction to a change, if there is a console: what fails in it is shown, since the change itself is done.
    template <typename Reaction>
    void React(Reaction&& reaction);
    /// Changes a list of accounts, if there is one.
    template <typename List, typename Change>
    void ChangeAccounts(List* (CRootItem::*list)() const, Change&& change);
    void Rebuild();

    CModel m_model;
    NodeServices m_services;
    std::shared_ptr<CRootItem> m_root;
    std::shared_ptr<CCompManagerExtensionItem> m_compManagerItem;
    std::shared_ptr<CServerManagerExtensionItem> m_serverManagerItem;
    IConsole* m_console = nullptr;
};

} // namespace quenvolta
