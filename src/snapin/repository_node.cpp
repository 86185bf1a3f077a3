#include "snapin/repository_node.h"

#include "model/model.h"
#include "snapin/command_id.h"
#include "snapin/natural_order.h"
#include "snapin/repository_entry_node.h"
#include "snapin/status_text.h"
#include "snapin/users_check.h"
#include "ui/shell.h"

#include <array>

namespace quenvolta
{

using namespace Qt::StringLiterals;

CRepositoryNode::CRepositoryNode(const NodeServices& services, std::shared_ptr<RepositoryInfo> repository,
                                 bool isFolder, PermissionState permissionState, int image)
    : CBaseNodeItem(services, image, isFolder ? Expandable::Yes : Expandable::No)
    , m_repository(std::move(repository))
    , m_isFolder(isFolder)
    , m_permissionState(permissionState)
{
}

TreePosition CRepositoryNode::Position() const
{
    return {m_repository->name, Path().isEmpty() ? u"/"_s : Path()};
}

std::span<const CommandHandler<CRepositoryNode>> CRepositoryNode::Commands()
{
    using Node = CRepositoryNode;
    using Handler = CommandHandler<Node>;
    static constexpr std::array kCommands{
        Handler{CommandId::kCopyUrl, &Node::CopyUrl},
        Handler{CommandId::kBrowse, &Node::Browse},
        Handler{CommandId::kManageSecurity, &Node::ShowProperties, DialogKind::RepositoryProperties},
        Handler{CommandId::kProperties, &Node::ShowProperties, DialogKind::RepositoryProperties},
        Handler{CommandId::kManageHooks, &Node::ManageHooks, DialogKind::RepositoryHooks},
        Handler{CommandId::kManageDelegation, &Node::ManageDelegation, DialogKind::RepositoryDelegation},
        Handler{CommandId::kConvertToQdfs, &Node::ConvertToQdfs, DialogKind::ConvertToQdfs},
        Handler{CommandId::kConvertToFsfs, &Node::ConvertToFsfs, DialogKind::ConvertToFsfs},
        Handler{CommandId::kConsistencyCheck, &Node::CheckConsistency, DialogKind::ConsistencyCheck},
        Handler{CommandId::kExportReplicationSeed, &Node::ExportReplicationSeed, DialogKind::ExportReplicationSeed},
        Handler{CommandId::kCreateFolder, &Node::CreateFolder, DialogKind::CreateFolder},
        Handler{CommandId::kCreateProjectStructure, &Node::CreateProjectStructure, DialogKind::CreateProjectStructure},
    };
    return kCommands;
}

int CRepositoryNode::GetMenuId()
{
    if (Path().isEmpty())
        return MenuId::kRepository;
    return m_isFolder ? MenuId::kFolder : MenuId::kFile;
}

CommandState CRepositoryNode::RuleOf(int command)
{
    return IsCommandEnabled(command) ? CommandState::Enabled : CommandState::Hidden;
}

DialogRequest CRepositoryNode::OwnRequest(IConsole& console, int page) const
{
    DialogRequest request = RequestFor(console);
    request.position = Position();
    request.repository = m_repository.get();
    request.isFolder = m_isFolder;
    request.page = page;
    return request;
}

void CRepositoryNode::CopyUrl(IConsole& console)
{
    if (CheckForUsers(Services(), RequestFor(console)))
        Services().shell.CopyText(Url());
}

void CRepositoryNode::Browse(IConsole& console)
{
    if (CheckForUsers(Services(), RequestFor(console)))
        Services().shell.OpenAddress(QUrl(Url()));
}

void CRepositoryNode::ShowProperties(IConsole& console)
{
    OpenDialog(DialogKind::RepositoryProperties, OwnRequest(console));
}

void CRepositoryNode::CreateFolder(IConsole& console)
{
    CreateFolders(console, DialogKind::CreateFolder);
}

void CRepositoryNode::CreateProjectStructure(IConsole& console)
{
    CreateFolders(console, DialogKind::CreateProjectStructure);
}

void CRepositoryNode::CreateFolders(IConsole& console, DialogKind dialog)
{
    if (!m_isFolder || !OpenDialog(dialog, OwnRequest(console)))
        return;
    ReloadState(console);
    console.UpdateAllViews(GetDataObject(DATA_OBJECT_TYPES::CCT_SCOPE));
    console.SelectScopeItem(ScopeItem());
}

HRESULT CRepositoryNode::OnExpand(IConsole& console, bool expanding, HSCOPEITEM item)
{
    if (!expanding || !m_isFolder)
        return S_OK;
    SetScopeItem(item);
    m_expanded = true;
    LoadChildren();
    return InsertChildren(console);
}

HRESULT CRepositoryNode::OnShow(IConsole& console, bool selecting)
{
    if (!selecting || IsInError())
        return CBaseNodeItem::OnShow(console, selecting);
    console.ResultData().DeleteAllRsltItems();
    const HRESULT result = console.Header().InsertColumn(0, LoadString(StringId::kColumnName), kNameColumnWidth);
    return Failed(result) ? result : ShowDescription(console);
}

HRESULT CRepositoryNode::OnRefresh(IConsole& console)
{
    ReloadState(console);
    return S_OK;
}

void CRepositoryNode::ReloadState(IConsole& console)
{
    const CStatusText refreshing(console, LoadString(StringId::kRefreshing));
    m_url.reset();
    const bool wasInError = IsInError();
    ReadChildren(StringId::kNoRepositoryAccess, [this] { ReadState(); });
    if (m_expanded)
        ReloadChildren(console);
    EnsurePermissionState(console);
    if (!IsShown())
        return;
    if (wasInError || IsInError())
        console.SelectScopeItem(ScopeItem());
    else
        ShowDescription(console);
}

bool CRepositoryNode::UpdatePermissionState(IConsole& console, const QString& path, PermissionState state)
{
    if (path == Position().path) {
        m_permissionState = state;
        SetImage(console, GetImageIndex());
        return true;
    }
    for (const auto& child : m_children) {
        if (path == child->Path() || path.startsWith(child->Path() + u'/'))
            return child->UpdatePermissionState(console, path, state);
    }
    return false;
}

void CRepositoryNode::EnsurePermissionState(IConsole& console)
{
    if (m_permissionState == PermissionState::Unknown)
        m_permissionState = ReadPermissionState();
    SetImage(console, GetImageIndex());
}

PermissionState CRepositoryNode::ReadPermissionState() const
{
    try {
        return Model().GetSecurity(Position()).isEmpty() ? PermissionState::InheritedOnly : PermissionState::Explicit;
    } catch (const Exception&) {
        return PermissionState::Unknown; // only the icon hangs on it, and the other entries are to be seen
    }
}

void CRepositoryNode::ForgetUrls()
{
    m_url.reset();
    for (const auto& child : m_children)
        child->ForgetUrls();
}

void CRepositoryNode::LoadChildren()
{
    if (m_childrenLoaded)
        return;
    ReadChildren(StringId::kNoRepositoryAccess, [this] {
        QList<RepositoryEntryInfo> entries = Model().GetChildren(Position());
        m_children.reserve(static_cast<std::size_t>(entries.size()));
        for (RepositoryEntryInfo& entry : entries)
            m_children.push_back(std::make_shared<CRepositoryEntryNode>(Services(), m_repository, std::move(entry)));
        NaturalOrder().Sort(m_children);
        m_childrenLoaded = true;
    });
}

HRESULT CRepositoryNode::InsertChildren(IConsole& console)
{
    for (const auto& child : m_children) {
        const HRESULT result = InsertChild(console, *child);
        if (Failed(result))
            return result;
    }
    return S_OK;
}

void CRepositoryNode::ReloadChildren(IConsole& console)
{
    console.NameSpace().DeleteItem(ScopeItem(), false);
    m_children.clear();
    m_childrenLoaded = false;
    if (IsInError())
        return;
    LoadChildren();
    InsertChildren(console);
}

HRESULT CRepositoryNode::ShowDescription(IConsole& console)
{
    return console.ResultData().SetDescBarText(LoadString(StringId::kDescriptionBar, Url()));
}

const QString& CRepositoryNode::Url()
{
    if (!m_url)
        m_url = ReadUrl();
    return *m_url;
}

} // namespace quenvolta
