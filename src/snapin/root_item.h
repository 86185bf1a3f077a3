#pragma once

#include "dashboard/command_link.h"
#include "dashboard/status_snapshot.h"
#include "snapin/base_node_item.h"

#include <QSet>

#include <memory>
#include <span>

namespace quenvolta
{

class CGroupsListNode;
class CRepositoriesListNode;
class CUsersListNode;

/// The managed server.
class CRootItem final : public CBaseNodeItem<CRootItem>
{
public:
    static constexpr NodeType kNodeType{{0x131B7A14, 0xB8F8, 0x43B3, 0xBC, 0x0F, 0xD4, 0x05, 0xDF, 0xF0, 0x46, 0xE3},
                                        StringId::kCaption};

    /// `extension`: the root hangs below another snap-in's node.
    CRootItem(const NodeServices& services, bool extension);
    ~CRootItem() override;

    static std::span<const CommandHandler<CRootItem>> Commands();
    QList<int> Toolbars() const override;
    HRESULT GetResultViewType(QString* viewType) override;
    bool HandleCommandLink(const QString& address, IConsole& console) override;
    void RenderStatus(IcStatusPage& page) override;

    /// Forgets where the root is in the tree, to be inserted anew.
    void Leave();

    /// Absent while the server can't be managed.
    CRepositoriesListNode* Repositories() const { return m_repositories.get(); }
    CUsersListNode* Users() const { return m_users.get(); }
    CGroupsListNode* Groups() const { return m_groups.get(); }

    /// Reads the status and builds the children anew; the name, too, where the computer may be another one.
    void Rebuild(IConsole& console);
    /// The counts of the status are read anew before they are shown again.
    void MarkCountsStale() { m_countsStale = true; }
    /// Has every view show the root anew.
    HRESULT UpdateViews(IConsole& console);

protected:
    int GetMenuId() override { return m_extension ? MenuId::kExtensionRoot : MenuId::kRoot; }
    CommandState RuleOf(int command) override;
    QString DisplayName() const override;
    QString GetResultPaneColInfo(int column) override;
    bool WantsPreload() const override { return !m_extension; }
    HRESULT OnExpand(IConsole& console, bool expanding, HSCOPEITEM item) override;
    HRESULT OnShow(IConsole& console, bool selecting) override;
    HRESULT OnRefresh(IConsole& console) override;
    HRESULT OnViewChange(IConsole& console) override;
    HRESULT OnPreload(IConsole& console, HSCOPEITEM item) override;

private:
    /// The links that lead somewhere now.
    QSet<CommandLink> OfferedLinks();

    void Connect(IConsole& console);
    void Start(IConsole& console);
    void Stop(IConsole& console);
    void Restart(IConsole& console);
    void ShowProperties(IConsole& console);
    void StartCommandPrompt(IConsole& console);
    void RunServices(IConsole& console, const QList<ServiceOperation>& operations);

    struct LinkAction;
    static std::span<const LinkAction> LinkActions();
    bool IsOffered(const LinkAction& action);
    void Browse(IConsole& console);
    void CreateUser(IConsole& console);
    void CreateGroup(IConsole& console);
    void CreateRepository(IConsole& console);
    void ImportRepository(IConsole& console);
    void ProvideFeedback(IConsole& console);
    void SubscribeForUpdates(IConsole& console);
    void ShowVersionInfo(IConsole& console);
    void OpenEventViewer(IConsole& console);
    void ConfigureLogging(IConsole& console);
    void ConfigureAuth(IConsole& console);
    void ShowUpdate(IConsole& console);
    void EnableQdfsService(IConsole& console);

    HRESULT BuildChildren(IConsole& console);

    bool m_extension;
    CStatusSnapshot m_status;
    bool m_countsStale = false;
    std::shared_ptr<CRepositoriesListNode> m_repositories;
    std::shared_ptr<CUsersListNode> m_users;
    std::shared_ptr<CGroupsListNode> m_groups;
};

} // namespace quenvolta
