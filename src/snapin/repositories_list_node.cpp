#include "snapin/repositories_list_node.h"

#include "model/model.h"
#include "snapin/command_id.h"
#include "snapin/natural_order.h"
#include "snapin/node_images.h"
#include "snapin/repository_columns.h"
#include "snapin/repository_root_node.h"
#include "snapin/status_text.h"
#include "snapin/users_check.h"
#include "ui/messages.h"
#include "ui/shell.h"

#include <algorithm>
#include <array>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int kRevisionsColumnWidth = 100;
constexpr int kTypeColumnWidth = 120;

constexpr int ImageOf(PermissionState state)
{
    return state == PermissionState::Explicit ? kImageRepositories + 1 : kImageRepositories;
}

} // namespace

CRepositoriesListNode::CRepositoriesListNode(const NodeServices& services, bool windowsAuthentication)
    : CBaseNodeItem(services, kImageRepositories, Expandable::Yes)
    , m_windowsAuthentication(windowsAuthentication)
{
    const int image = ReadImage();
    GetScopeData().nImage = image;
    GetScopeData().nOpenImage = image;
}

std::span<const CommandHandler<CRepositoriesListNode>> CRepositoriesListNode::Commands()
{
    using Node = CRepositoriesListNode;
    static constexpr std::array kCommands{
        CommandHandler<Node>{CommandId::kCreateRepository, &Node::CreateRepository, DialogKind::CreateRepository},
        CommandHandler<Node>{CommandId::kImportRepository, &Node::ImportRepository},
        CommandHandler<Node>{CommandId::kBrowse, &Node::Browse},
        CommandHandler<Node>{CommandId::kManageSecurity, &Node::ShowProperties, DialogKind::GlobalPermissions},
        CommandHandler<Node>{CommandId::kProperties, &Node::ShowProperties, DialogKind::GlobalPermissions},
        CommandHandler<Node>{CommandId::kUpgradeRepositories, &Node::UpgradeRepositories,
                             DialogKind::UpgradeRepositories},
    };
    return kCommands;
}

int CRepositoriesListNode::GetMenuId()
{
    return AreGlobalPermissionsAvailable() ? MenuId::kRepositories : MenuId::kRepositoriesWithoutPermissions;
}

CommandState CRepositoriesListNode::RuleOf(int command)
{
    if (command == CommandId::kProperties && !AreGlobalPermissionsAvailable())
        return CommandState::Hidden;
    // An old server's answer needs no dialog.
    const bool lacksImport = command == CommandId::kImportRepository &&
                             Model().HasCapability(ServerCapability::kRepositoryImport) &&
                             !Services().dialogs.Has(DialogKind::ImportRepository);
    return lacksImport ? CommandState::Grayed : CommandState::Enabled;
}

void CRepositoriesListNode::CreateRepository(IConsole& console)
{
    OpenDialog(DialogKind::CreateRepository, RequestFor(console));
}

void CRepositoriesListNode::ImportRepository(IConsole& console)
{
    if (Model().HasCapability(ServerCapability::kRepositoryImport))
        OpenDialog(DialogKind::ImportRepository, RequestFor(console));
    else
        Messages().ShowMessage({MessageIcon::Error, MessageButtons::Ok}, StringId::kImportNotSupported);
}

void CRepositoriesListNode::Browse(IConsole& console)
{
    if (CheckForUsers(Services(), RequestFor(console)))
        Services().shell.OpenAddress(QUrl(Model().GetUrl({})));
}

void CRepositoriesListNode::ShowProperties(IConsole& console)
{
    DialogRequest request = RequestFor(console);
    request.position = {QString(), u"/"_s};
    OpenDialog(DialogKind::GlobalPermissions, request);
}

void CRepositoriesListNode::UpgradeRepositories(IConsole& console)
{
    OpenDialog(DialogKind::UpgradeRepositories, RequestFor(console));
}

void CRepositoriesListNode::AddRepository(IConsole& console, const QString& name)
{
    if (!m_childrenLoaded || Find(name) != m_children.end())
        return;
    auto child = std::make_shared<CRepositoryRootNode>(Services(), Model().GetRepository(name));
    child->EnsurePermissionState(console);
    const NaturalOrder order;
    const auto next = std::ranges::find_if(
        m_children, [&](const auto& other) { return order.IsBefore<CRepositoryNode>(*child, *other); });
    const HSCOPEITEM before = next != m_children.end() ? (*next)->ScopeItem() : 0;
    m_children.insert(next, child);
    InsertChild(console, *child, before);
}

void CRepositoriesListNode::RemoveRepository(IConsole& console, const QString& name)
{
    const auto found = Find(name);
    if (found == m_children.end())
        return;
    const std::shared_ptr<CRepositoryRootNode> child = std::move(*found);
    m_children.erase(found);
    console.NameSpace().DeleteItem(child->ScopeItem(), true);
}

void CRepositoriesListNode::ReloadRepository(IConsole& console, const QString& name)
{
    const auto found = Find(name);
    if (found != m_children.end())
        (*found)->ReloadState(console);
}

void CRepositoriesListNode::UpdatePermissionState(IConsole& console, const TreePosition& target, PermissionState state)
{
    if (target.repositoryName.isEmpty()) {
        SetImage(console, ImageOf(state));
        return;
    }
    const auto found = Find(target.repositoryName);
    if (found != m_children.end())
        (*found)->UpdatePermissionState(console, target.path, state);
}

HRESULT CRepositoriesListNode::OnExpand(IConsole& console, bool expanding, HSCOPEITEM item)
{
    if (!expanding)
        return S_OK;
    SetScopeItem(item);
    m_expanded = true;
    LoadChildren();
    return InsertChildren(console);
}

HRESULT CRepositoriesListNode::OnShow(IConsole& console, bool selecting)
{
    if (!selecting || IsInError())
        return CBaseNodeItem::OnShow(console, selecting);
    console.ResultData().DeleteAllRsltItems();
    IHeaderCtrl& header = console.Header();
    header.InsertColumn(kNameColumn, LoadString(StringId::kColumnName), kNameColumnWidth);
    if (Model().HasCapability(ServerCapability::kRepositoryType)) {
        header.InsertColumn(kRevisionsColumn, LoadString(StringId::kColumnRevisions), kRevisionsColumnWidth);
        header.InsertColumn(kTypeColumn, LoadString(StringId::kColumnType), kTypeColumnWidth);
    }
    return S_OK;
}

HRESULT CRepositoriesListNode::OnRefresh(IConsole& console)
{
    const CStatusText refreshing(console, LoadString(StringId::kRefreshing));
    if (m_expanded) {
        console.NameSpace().DeleteItem(ScopeItem(), false);
        m_children.clear();
        m_childrenLoaded = false;
        LoadChildren();
        console.SelectScopeItem(ScopeItem());
        InsertChildren(console);
    }
    return SetImage(console, ReadImage());
}

void CRepositoriesListNode::LoadChildren()
{
    if (m_childrenLoaded)
        return;
    ReadChildren(StringId::kNoRepositoriesAccess, [this] {
        const QList<RepositoryInfo> repositories = Model().GetRepositories();
        m_children.reserve(static_cast<std::size_t>(repositories.size()));
        for (const RepositoryInfo& repository : repositories)
            m_children.push_back(std::make_shared<CRepositoryRootNode>(Services(), repository));
        NaturalOrder().Sort(m_children);
        m_childrenLoaded = true;
    });
}

HRESULT CRepositoriesListNode::InsertChildren(IConsole& console)
{
    for (const auto& child : m_children) {
        child->EnsurePermissionState(console);
        const HRESULT result = InsertChild(console, *child);
        if (Failed(result))
            return result;
    }
    return S_OK;
}

CRepositoriesListNode::Children::iterator CRepositoriesListNode::Find(const QString& name)
{
    return std::ranges::find(m_children, name, [](const auto& child) { return child->Name(); });
}

bool CRepositoriesListNode::AreGlobalPermissionsAvailable() const
{
    const std::uint32_t level = Model().GetFeatureLevel();
    return level == 0 || (level == 2 && m_windowsAuthentication);
}

int CRepositoriesListNode::ReadImage() const
{
    try {
        if (!AreGlobalPermissionsAvailable())
            return Image();
        const bool hasEntries = !Model().GetSecurity({QString(), u"/"_s}).isEmpty();
        return ImageOf(hasEntries ? PermissionState::Explicit : PermissionState::InheritedOnly);
    } catch (const Exception&) {
        return Image(); // only the icon hangs on it
    }
}

} // namespace quenvolta
