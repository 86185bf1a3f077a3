#include "dashboard/server_about_dlg.h"
#include "foundation/format.h"
#include "model/model.h"
#include "snapin/root_item.h"
#include "snapin/users_check.h"
#include "ui/help_site.h"
#include "ui/shell.h"
#include "updates/update_info_dlg.h"

#include <algorithm>
#include <array>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int kAuthenticationPage = 4;
constexpr int kLoggingPage = 5;

} // namespace

/// What a link of the dashboard runs.
struct CRootItem::LinkAction {
    CommandLink link;
    void (CRootItem::*run)(IConsole& console);
    /// The dialog without which there is nothing to run.
    DialogKind dialog = DialogKind::None;
};

std::span<const CRootItem::LinkAction> CRootItem::LinkActions()
{
    using Link = CommandLink;
    using Kind = DialogKind;
    static constexpr std::array kActions{
        LinkAction{Link::Browse, &CRootItem::Browse},
        LinkAction{Link::CreateUser, &CRootItem::CreateUser, Kind::CreateUser},
        LinkAction{Link::CreateGroup, &CRootItem::CreateGroup, Kind::CreateGroup},
        LinkAction{Link::CreateRepository, &CRootItem::CreateRepository, Kind::CreateRepository},
        LinkAction{Link::ImportRepository, &CRootItem::ImportRepository, Kind::ImportRepository},
        LinkAction{Link::ProvideFeedback, &CRootItem::ProvideFeedback},
        LinkAction{Link::SubscribeForUpdates, &CRootItem::SubscribeForUpdates},
        LinkAction{Link::VersionInfo, &CRootItem::ShowVersionInfo},
        LinkAction{Link::OpenEventViewer, &CRootItem::OpenEventViewer},
        LinkAction{Link::ConfigureLogging, &CRootItem::ConfigureLogging, Kind::ServerProperties},
        LinkAction{Link::ConfigureAuth, &CRootItem::ConfigureAuth, Kind::ServerProperties},
        LinkAction{Link::ServerUpdate, &CRootItem::ShowUpdate},
        LinkAction{Link::ConnectToComputer, &CRootItem::Connect, Kind::SelectComputer},
        LinkAction{Link::EnableQdfsService, &CRootItem::EnableQdfsService, Kind::ServiceState},
    };
    return kActions;
}

bool CRootItem::IsOffered(const LinkAction& action)
{
    // An old server can't import; the link says so, and needs no dialog.
    const bool saysWhyNot = action.link == CommandLink::ImportRepository && m_status.isRead && !m_status.qdfsService;
    return action.dialog == DialogKind::None || Services().dialogs.Has(action.dialog) || saysWhyNot;
}

QSet<CommandLink> CRootItem::OfferedLinks()
{
    QSet<CommandLink> links;
    for (const LinkAction& action : LinkActions()) {
        if (IsOffered(action))
            links.insert(action.link);
    }
    return links;
}

bool CRootItem::HandleCommandLink(const QString& address, IConsole& console)
{
    if (const std::optional<CommandLink> link = FindCommandLink(address)) {
        const auto action = std::ranges::find(LinkActions(), *link, &LinkAction::link);
        if (IsOffered(*action))
            (this->*action->run)(console);
        return true;
    }
    if (!IsWebAddress(address))
        return false;
    Services().shell.OpenAddress(QUrl(address));
    return true;
}

void CRootItem::Browse(IConsole& console)
{
    if (CheckForUsers(Services(), RequestFor(console)))
        Services().shell.OpenAddress(QUrl(m_status.settings.url));
}

void CRootItem::CreateUser(IConsole& console)
{
    OpenDialog(DialogKind::CreateUser, RequestFor(console));
}

void CRootItem::CreateGroup(IConsole& console)
{
    OpenDialog(DialogKind::CreateGroup, RequestFor(console));
}

void CRootItem::CreateRepository(IConsole& console)
{
    OpenDialog(DialogKind::CreateRepository, RequestFor(console));
}

void CRootItem::ImportRepository(IConsole& console)
{
    if (Model().HasCapability(ServerCapability::kQdfs))
        OpenDialog(DialogKind::ImportRepository, RequestFor(console));
    else
        Messages().ShowMessage({MessageIcon::Error, MessageButtons::Ok}, StringId::kImportNotSupported);
}

void CRootItem::ProvideFeedback(IConsole& /*console*/)
{
    QUrl page(LoadString(StringId::kFeedbackPage));
    page.setQuery(Format(u"qnvl-server=%s", QStringLiteral(QUENVOLTA_VERSION)));
    Services().shell.OpenAddress(page);
}

void CRootItem::SubscribeForUpdates(IConsole& /*console*/)
{
    Services().shell.OpenAddress(HelpUrl(u"/go/2031/"_s));
}

void CRootItem::ShowVersionInfo(IConsole& console)
{
    CServerAboutDlg(RequestFor(console).parent, m_status.versions).exec();
}

void CRootItem::OpenEventViewer(IConsole& /*console*/)
{
    Services().shell.OpenEventViewer(Model().ComputerName());
}

void CRootItem::ConfigureLogging(IConsole& console)
{
    DialogRequest request = RequestFor(console);
    request.page = kLoggingPage;
    OpenDialog(DialogKind::ServerProperties, request);
}

void CRootItem::ConfigureAuth(IConsole& console)
{
    DialogRequest request = RequestFor(console);
    request.page = kAuthenticationPage;
    OpenDialog(DialogKind::ServerProperties, request);
}

void CRootItem::ShowUpdate(IConsole& console)
{
    CUpdateInfoDlg(RequestFor(console).parent, Model().GetUpdateInfo(), m_status.versions.version, UpdateSite(),
                   [this](const QUrl& address) { Services().shell.OpenAddress(address); })
        .exec();
}

void CRootItem::EnableQdfsService(IConsole& console)
{
    const ExplainedQuestion question{.instruction = LoadString(StringId::kAskEnableQdfs),
                                     .content = LoadString(StringId::kAboutQdfs),
                                     .helpLabel = LoadString(StringId::kLearnMoreAboutQdfs),
                                     .helpPage = u"/go/2039/"_s};
    if (Messages().AskExplained(question) != MessageAnswer::Yes)
        return;
    Model().EnableQdfsService();
    RunServices(console, {{ServiceAction::Start, ServerService::Qdfs}});
}

} // namespace quenvolta
