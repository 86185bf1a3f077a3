#include "snapin/root_item.h"

#include "dashboard/dashboard_status.h"
#include "dashboard/status_page.h"
#include "model/model.h"
#include "snapin/command_id.h"
#include "snapin/groups_list_node.h"
#include "snapin/node_images.h"
#include "snapin/repositories_list_node.h"
#include "snapin/service_rules.h"
#include "snapin/status_text.h"
#include "snapin/users_list_node.h"
#include "ui/guard.h"
#include "ui/shell.h"

#include <QCoreApplication>
#include <QDir>

#include <array>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int kStatusPageResource = 209;
constexpr int kTypeOfNodeColumn = 1;
constexpr int kDescriptionColumn = 2;

void RenderInto(IConsole& console, IBaseNode& node)
{
    IResultView* view = nullptr;
    if (Failed(console.QueryResultView(&view)))
        return;
    if (auto* page = dynamic_cast<IcStatusPage*>(view))
        node.RenderStatus(*page);
}

} // namespace

CRootItem::CRootItem(const NodeServices& services, bool extension)
    : CBaseNodeItem(services, kImageRoot, Expandable::Yes)
    , m_extension(extension)
{
}

CRootItem::~CRootItem() = default;

std::span<const CommandHandler<CRootItem>> CRootItem::Commands()
{
    using Handler = CommandHandler<CRootItem>;
    static constexpr std::array kCommands{
        Handler{CommandId::kConnect, &CRootItem::Connect, DialogKind::SelectComputer},
        Handler{CommandId::kStart, &CRootItem::Start, DialogKind::ServiceState},
        Handler{CommandId::kStop, &CRootItem::Stop, DialogKind::ServiceState},
        Handler{CommandId::kRestart, &CRootItem::Restart, DialogKind::ServiceState},
        Handler{CommandId::kProperties, &CRootItem::ShowProperties, DialogKind::ServerProperties},
        Handler{CommandId::kCommandPrompt, &CRootItem::StartCommandPrompt},
    };
    return kCommands;
}

QList<int> CRootItem::Toolbars() const
{
    return {ToolbarId::kServerProperties, ToolbarId::kServices, ToolbarId::kCommandPrompt};
}

CommandState CRootItem::RuleOf(int command)
{
    bool isEnabled = true;
    switch (command) {
    case CommandId::kStart:
        isEnabled = !OperationsToStart(m_status).isEmpty();
        break;
    case CommandId::kStop:
    case CommandId::kRestart:
        isEnabled = !OperationsToStop(m_status).isEmpty();
        break;
    case CommandId::kProperties:
        isEnabled = m_status.isRead;
        break;
    default:
        break;
    }
    return isEnabled ? CommandState::Enabled : CommandState::Grayed;
}

void CRootItem::Connect(IConsole& console)
{
    OpenDialog(DialogKind::SelectComputer, RequestFor(console)); // the model tells of another computer
}

void CRootItem::Start(IConsole& console)
{
    RunServices(console, OperationsToStart(m_status));
}

void CRootItem::Stop(IConsole& console)
{
    RunServices(console, OperationsToStop(m_status));
}

void CRootItem::Restart(IConsole& console)
{
    RunServices(console, OperationsToRestart(m_status));
}

void CRootItem::RunServices(IConsole& console, const QList<ServiceOperation>& operations)
{
    DialogRequest request = RequestFor(console);
    request.operations = operations;
    Guarded(Messages(), [&] { OpenDialog(DialogKind::ServiceState, request); });
    BuildChildren(console); // what was begun before a failure is to be seen, too
    UpdateViews(console);
}

void CRootItem::ShowProperties(IConsole& console)
{
    OpenDialog(DialogKind::ServerProperties, RequestFor(console));
}

void CRootItem::StartCommandPrompt(IConsole& /*console*/)
{
    const bool isLocal = Model().ComputerName().isEmpty();
    Services().shell.StartCommandPrompt(isLocal ? m_status.settings.repositoriesRoot : QDir::homePath());
}

void CRootItem::Leave()
{
    SetScopeItem(0);
    m_repositories.reset();
    m_users.reset();
    m_groups.reset();
}

HRESULT CRootItem::GetResultViewType(QString* viewType)
{
    const QString module = QCoreApplication::applicationFilePath();
    *viewType = module.isEmpty() ? QString() : u"res://%1/%2"_s.arg(module).arg(kStatusPageResource);
    return S_OK;
}

void CRootItem::RenderStatus(IcStatusPage& page)
{
    if (m_countsStale && m_status.isRead)
        m_status.ReadCounts(Model());
    m_countsStale = false;
    page.ShowStatus({.server = m_status,
                     .update = Model().GetUpdateInfo(),
                     .updateCheckDisabled = Model().IsUpdateCheckDisabled(),
                     .isStandalone = !m_extension,
                     .links = OfferedLinks()});
}

void CRootItem::Rebuild(IConsole& console)
{
    if (ScopeItem() == 0)
        return;
    UpdateScopeItem(console, SDI_STR);
    BuildChildren(console);
}

HRESULT CRootItem::UpdateViews(IConsole& console)
{
    return console.UpdateAllViews(GetDataObject(DATA_OBJECT_TYPES::CCT_SCOPE));
}

QString CRootItem::DisplayName() const
{
    QString product = LoadString(StringId::kCaption);
    if (m_extension)
        return product;
    const QString& computer = Model().ComputerName();
    return computer.isEmpty() ? LoadString(StringId::kRootNameLocal, product)
                              : LoadString(StringId::kRootNameRemote, product, computer);
}

QString CRootItem::GetResultPaneColInfo(int column)
{
    switch (column) {
    case kTypeOfNodeColumn:
        return LoadString(StringId::kRootTypeColumn);
    case kDescriptionColumn:
        return LoadString(StringId::kSnapInDescription);
    default:
        return DisplayName();
    }
}

HRESULT CRootItem::OnExpand(IConsole& console, bool expanding, HSCOPEITEM item)
{
    if (!expanding)
        return S_OK;
    SetScopeItem(item);
    return BuildChildren(console);
}

HRESULT CRootItem::OnShow(IConsole& console, bool selecting)
{
    if (selecting)
        RenderInto(console, *this);
    return S_OK;
}

HRESULT CRootItem::OnRefresh(IConsole& console)
{
    const CStatusText refreshing(console, LoadString(StringId::kRefreshing));
    Model().Disconnect(); // the next call connects anew and reads the server's version and capabilities
    const HRESULT result = BuildChildren(console);
    UpdateViews(console);
    return result;
}

HRESULT CRootItem::OnViewChange(IConsole& console)
{
    RenderInto(console, *this);
    return S_OK;
}

HRESULT CRootItem::OnPreload(IConsole& console, HSCOPEITEM item)
{
    SetScopeItem(item);
    return UpdateScopeItem(console, SDI_STR);
}

HRESULT CRootItem::BuildChildren(IConsole& console)
{
    m_status = CStatusSnapshot::Read(Model());
    m_countsStale = false;
    console.NameSpace().DeleteItem(ScopeItem(), false);
    m_repositories.reset();
    m_users.reset();
    m_groups.reset();
    if (!m_status.isRead)
        return S_OK;

    const bool windowsAuthentication = m_status.settings.windowsAuthentication;
    m_repositories = std::make_shared<CRepositoriesListNode>(Services(), windowsAuthentication);
    m_users = std::make_shared<CUsersListNode>(Services());
    m_groups = std::make_shared<CGroupsListNode>(Services());
    HRESULT result = InsertChild(console, *m_repositories);
    if (windowsAuthentication)
        return result;
    if (Succeeded(result))
        result = InsertChild(console, *m_users);
    return Succeeded(result) ? InsertChild(console, *m_groups) : result;
}

} // namespace quenvolta
