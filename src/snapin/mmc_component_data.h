#pragma once

#include "foundation/preferences.h"
#include "model/model.h"
#include "platform/mmc/component_data.h"
#include "snapin/node_services.h"
#include "ui/messages.h"

#include <memory>

namespace quenvolta
{

class CRootItem;

/// What the snap-in works with; it outlives the snap-in.
struct SnapInServices {
    WbemLocatorFactory locatorFactory;
    IcPreferences& preferences;
    IcMessages& messages;
};

/// The snap-in in one console: the model of the managed server, the root of the tree, and what the tree does when the
/// model tells of a change.
class CMMCComponentData : public IComponentData, private IcModelEvents
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

    CModel& Model() { return m_model; }
    CRootItem& Root() { return *m_root; }
    IcMessages& Messages() { return m_services.messages; }

protected:
    /// `extension`: below another snap-in's node instead of standing alone.
    CMMCComponentData(const SnapInServices& services, bool extension);

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
    void OnComputerChanged() override;
    void OnUpdateStateChanged() override;

    /// Runs a reaction to a change, if there is a console: what fails in it is shown, since the change itself is done.
    template <typename Reaction>
    void React(Reaction&& reaction);
    void ReloadUsers();
    void ReloadGroups();
    void Rebuild();

    CModel m_model;
    NodeServices m_services;
    std::shared_ptr<CRootItem> m_root;
    IConsole* m_console = nullptr;
};

} // namespace quenvolta
