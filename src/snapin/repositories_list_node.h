#pragma once

#include "model/permission_state.h"
#include "model/tree_position.h"
#include "snapin/base_node_item.h"

#include <memory>
#include <vector>

namespace quenvolta
{

class CRepositoryRootNode;

/// "Repositories": the list of the server's repositories.
class CRepositoriesListNode final : public CBaseNodeItem<CRepositoriesListNode>
{
public:
    static constexpr NodeType kNodeType{{0xB1858DBB, 0x2A4E, 0x4519, 0xB3, 0xA6, 0x6C, 0xEC, 0xA9, 0x1B, 0xFC, 0xB6},
                                        StringId::kRepositoriesName};

    CRepositoriesListNode(const NodeServices& services, bool windowsAuthentication);

    /// Inserts the repository in its place where it isn't shown yet.
    void AddRepository(IConsole& console, const QString& name);
    void RemoveRepository(IConsole& console, const QString& name);
    void ReloadRepository(IConsole& console, const QString& name);
    /// Takes the permission state of the server or of an entry.
    void UpdatePermissionState(IConsole& console, const TreePosition& target, PermissionState state);

    static std::span<const CommandHandler<CRepositoriesListNode>> Commands();
    QList<int> Toolbars() const override { return {ToolbarId::kRepositoriesProperties}; }

protected:
    int GetMenuId() override;
    CommandState RuleOf(int command) override;
    QString DisplayName() const override { return LoadString(kNodeType.displayName); }
    HRESULT OnExpand(IConsole& console, bool expanding, HSCOPEITEM item) override;
    HRESULT OnShow(IConsole& console, bool selecting) override;
    HRESULT OnRefresh(IConsole& console) override;

private:
    using Children = std::vector<std::shared_ptr<CRepositoryRootNode>>;

    void CreateRepository(IConsole& console);
    void ImportRepository(IConsole& console);
    void Browse(IConsole& console);
    void ShowProperties(IConsole& console);
    void UpgradeRepositories(IConsole& console);

    void LoadChildren();
    HRESULT InsertChildren(IConsole& console);
    Children::iterator Find(const QString& name);
    bool AreGlobalPermissionsAvailable() const;
    /// The image by the server-wide permissions; the present one where these can't be read.
    int ReadImage() const;

    Children m_children;
    bool m_windowsAuthentication;
    bool m_childrenLoaded = false;
    bool m_expanded = false;
};

} // namespace quenvolta
