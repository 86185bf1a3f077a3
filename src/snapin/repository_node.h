#pragma once

#include "model/permission_state.h"
#include "model/repository_info.h"
#include "model/tree_position.h"
#include "snapin/base_node_item.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace quenvolta
{

class CRepositoryEntryNode;

/// What a repository and the entries inside it have in common.
class CRepositoryNode : public CBaseNodeItem<CRepositoryNode>
{
public:
    static constexpr NodeType kNodeType{{0x75303CE5, 0x43D8, 0x485A, 0x88, 0x66, 0x9C, 0xE7, 0xE7, 0xA7, 0xA3, 0x5B}};

    /// The entries of a repository share its record, so that a new name or type reaches them all.
    CRepositoryNode(const NodeServices& services, std::shared_ptr<RepositoryInfo> repository, bool isFolder,
                    PermissionState permissionState, int image);

    virtual const QString& Name() const = 0;
    /// Inside the repository: empty for the repository itself, else beginning with "/".
    virtual const QString& Path() const = 0;
    bool IsFolder() const { return m_isFolder; }
    TreePosition Position() const;

    const RepositoryInfo& GetRepositoryInfo() const { return *m_repository; }
    /// Reads the state, and the children where they were shown, anew.
    void ReloadState(IConsole& console);
    /// Takes the permission state of an entry at or below this node; false when it isn't there (yet).
    bool UpdatePermissionState(IConsole& console, const QString& path, PermissionState state);
    /// Reads the permission state where the record didn't tell it (a failure leaves it unknown), and sets the image.
    void EnsurePermissionState(IConsole& console);
    /// Forgets the cached addresses here and below.
    void ForgetUrls();

    static std::span<const CommandHandler<CRepositoryNode>> Commands();
    QList<int> Toolbars() const override { return {ToolbarId::kEntryProperties}; }
    bool HasAddress() const override { return true; }
    QString Address() override { return Url(); }

protected:
    int GetMenuId() override;
    CommandState RuleOf(int command) override;
    QString DisplayName() const override { return Name(); }
    HRESULT OnExpand(IConsole& console, bool expanding, HSCOPEITEM item) override;
    HRESULT OnShow(IConsole& console, bool selecting) override;
    HRESULT OnRefresh(IConsole& console) override;

    /// False for a command that isn't offered now.
    virtual bool IsCommandEnabled(int /*command*/) { return true; }
    virtual void ManageHooks(IConsole& /*console*/) {}
    virtual void ManageDelegation(IConsole& /*console*/) {}
    virtual void ConvertToQdfs(IConsole& /*console*/) {}
    virtual void ConvertToFsfs(IConsole& /*console*/) {}
    virtual void CheckConsistency(IConsole& /*console*/) {}
    virtual void ExportReplicationSeed(IConsole& /*console*/) {}
    /// What a dialog about this node is opened with.
    DialogRequest OwnRequest(IConsole& console, int page = 0) const;

    /// The image without explicit permission entries; with them it is the next one.
    virtual int BaseImage() const = 0;
    /// Reads what the node itself shows from the server.
    virtual void ReadState() {}
    virtual QString ReadUrl() = 0;

    int GetImageIndex() const { return ImageOf(BaseImage(), m_permissionState); }
    static int ImageOf(int baseImage, PermissionState state)
    {
        return state == PermissionState::Explicit ? baseImage + 1 : baseImage;
    }
    RepositoryInfo& Repository() { return *m_repository; }
    void SetPermissionState(PermissionState state) { m_permissionState = state; }
    void SetUrl(QString url) { m_url = std::move(url); }
    HRESULT ShowDescription(IConsole& console);

private:
    void CopyUrl(IConsole& console);
    void Browse(IConsole& console);
    void ShowProperties(IConsole& console);
    void CreateFolder(IConsole& console);
    void CreateProjectStructure(IConsole& console);
    void CreateFolders(IConsole& console, DialogKind dialog);

    void LoadChildren();
    HRESULT InsertChildren(IConsole& console);
    void ReloadChildren(IConsole& console);
    PermissionState ReadPermissionState() const;
    const QString& Url();

    std::shared_ptr<RepositoryInfo> m_repository;
    bool m_isFolder;
    PermissionState m_permissionState;
    std::optional<QString> m_url;
    std::vector<std::shared_ptr<CRepositoryEntryNode>> m_children;
    bool m_childrenLoaded = false;
    bool m_expanded = false;
};

} // namespace quenvolta
