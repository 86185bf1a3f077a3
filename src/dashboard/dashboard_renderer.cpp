#include "dashboard/dashboard_renderer.h"

#include "dashboard/service_state_text.h"
#include "foundation/simple_exception.h"
#include "ui/help_site.h"

#include <QUrl>

#include <array>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::uint32_t kStopped = 1;
constexpr std::uint32_t kRunning = 4;

struct ErrorPanel {
    const char16_t* id;
    const char16_t* messageId; ///< null for none
};

/// By StatusError, without the first.
constexpr std::array kErrorPanels{
    ErrorPanel{u"error", u"error-message"},
    ErrorPanel{u"error-rpc", u"error-rpc-message"},
    ErrorPanel{u"error-access-denied", u"error-access-denied-message"},
    ErrorPanel{u"error-broken-wmi", u"error-broken-wmi-message"},
    ErrorPanel{u"error-not-installed", nullptr},
};

/// The pages of the help-link site that the page leads to.
constexpr std::array kHelpPages{u"/go/2032/", u"/go/2033/", u"/go/2036/", u"/go/2037/", u"/go/2038/"};

QStringList ErrorPanelIds()
{
    QStringList ids;
    for (const ErrorPanel& panel : kErrorPanels)
        ids.append(QString::fromUtf16(panel.id));
    return ids;
}

QString MarkOf(std::uint32_t state)
{
    if (state == kRunning)
        return u"mark good"_s;
    return state == kStopped ? u"mark bad"_s : u"mark busy"_s;
}

/// One rendering of a status that was read.
class ServerRendering
{
public:
    ServerRendering(CDashboardDocument& document, const CStatusSnapshot& server)
        : m_document(document)
        , m_server(server)
    {
    }

    void Render()
    {
        RenderServices();
        RenderAuthentication();
        RenderRepositories();
        RenderLogging();
        RenderVersions();
        m_document.SetVisible(u"server-status"_s, true);
        m_document.SetVisible(u"server-info"_s, true);
        m_document.SelectOne(ErrorPanelIds(), {});
    }

private:
    void RenderServices()
    {
        m_document.SetHTMLElement(u"state"_s, ServiceStateText(m_server.httpServiceState));
        m_document.SetHTMLClass(u"http-mark"_s, MarkOf(m_server.httpServiceState));
        if (!m_server.qdfsService) {
            m_document.HideChildPanels(u"qdfssvc-state-block"_s);
        } else if (IsDisabled(*m_server.qdfsService)) {
            m_document.SelectPanel(u"qdfssvc-disabled"_s);
        } else {
            m_document.SelectPanel(u"qdfssvc-state-available"_s);
            m_document.SetHTMLElement(u"qdfssvc-state"_s, ServiceStateText(m_server.qdfsService->state));
            m_document.SetHTMLClass(u"qdfs-mark"_s, MarkOf(m_server.qdfsService->state));
        }
        m_document.SetHTMLElement(u"url"_s, m_server.settings.url);
        m_document.SetVisible(u"url-line"_s, !m_server.settings.url.isEmpty());
    }

    static bool IsDisabled(const ServiceStatus& service)
    {
        return service.startMode == kStartModeDisabled && service.state == kStopped;
    }

    void RenderAuthentication()
    {
        const ServerSettings& settings = m_server.settings;
        if (settings.windowsAuthentication) {
            m_document.SelectPanel(u"windows-auth"_s);
            m_document.SetEither(settings.basicAuthentication, u"basic-auth-enabled"_s, u"basic-auth-disabled"_s);
            m_document.SetEither(settings.integratedAuthentication, u"integrated-auth-enabled"_s,
                                 u"integrated-auth-disabled"_s);
        } else if (!m_server.accountsFailure.isEmpty()) {
            m_document.SelectPanel(u"subversion-auth-error"_s);
            m_document.SetHTMLElement(u"subversion-auth-error-message"_s, m_server.accountsFailure);
        } else {
            m_document.SelectPanel(u"subversion-auth"_s);
            m_document.SetHTMLElement(u"users"_s, QString::number(m_server.userCount));
            m_document.SetHTMLElement(u"groups"_s, QString::number(m_server.groupCount));
        }
    }

    void RenderRepositories()
    {
        if (!m_server.repositoriesFailure.isEmpty()) {
            m_document.SelectPanel(u"repositories-info-error"_s);
            m_document.SetHTMLElement(u"repositories-info-error-message"_s, m_server.repositoriesFailure);
        } else {
            m_document.SelectPanel(u"repositories-info"_s);
            m_document.SetHTMLElement(u"repositories-info-count"_s, QString::number(m_server.repositoryCount));
        }
    }

    void RenderLogging()
    {
        const ServerSettings& settings = m_server.settings;
        m_document.SetEither(settings.accessLogging, u"access-logging-enabled"_s, u"access-logging-disabled"_s);
        m_document.SetEither(settings.operationalLogging, u"operational-logging-enabled"_s,
                             u"operational-logging-disabled"_s);
    }

    void RenderVersions()
    {
        m_document.SetEither(true, u"bottom_links_w_version"_s, u"bottom_links_wo_version"_s);
        m_document.SetHTMLElement(u"qnvl_server_ver"_s, m_server.versions.version);
        m_document.SetHTMLElement(u"subversion_ver"_s, m_server.versions.subversionVersion);
        m_document.SetHTMLElement(u"apache_ver"_s, m_server.versions.apacheVersion);
    }

    CDashboardDocument& m_document;
    const CStatusSnapshot& m_server;
};

void RenderUpdate(CDashboardDocument& document, const DashboardStatus& status)
{
    if (status.updateCheckDisabled) {
        document.SelectPanel(u"updates-check-disabled"_s);
        return;
    }
    switch (status.update.status) {
    case UpdateCheckStatus::NotChecked:
    case UpdateCheckStatus::UpToDate:
        document.HideChildPanels(u"update-info-block"_s);
        return;
    case UpdateCheckStatus::UpdateAvailable:
        document.SelectPanel(u"updates-available-info"_s);
        document.SetHTMLElement(u"updates-available-ver"_s, status.update.version);
        return;
    case UpdateCheckStatus::Failed:
        document.SelectPanel(u"updates-check-failure"_s);
        document.SetHTMLElement(u"updates-check-failure-msg"_s, status.update.errorText);
        return;
    }
    throw SimpleException(u"Unknown update request status: %d", static_cast<std::int32_t>(status.update.status));
}

void RenderFailure(CDashboardDocument& document, const DashboardStatus& status)
{
    const StatusError error = status.server.error;
    document.SetVisible(u"bottom_links_wo_version"_s, error != StatusError::NotInstalled);
    document.SetVisible(u"bottom_links_w_version"_s, false);
    document.SetVisible(u"server-status"_s, false);
    if (error == StatusError::None)
        return;
    const ErrorPanel& panel = kErrorPanels.at(static_cast<std::size_t>(error) - 1);
    document.SelectOne(ErrorPanelIds(), QString::fromUtf16(panel.id));
    if (panel.messageId != nullptr)
        document.SetHTMLElement(QString::fromUtf16(panel.messageId), status.server.errorText);
    document.SetVisible(u"connect-to-link"_s, error == StatusError::NotInstalled && status.isStandalone);
}

void RenderLinks(CDashboardDocument& document, const QSet<CommandLink>& links)
{
    for (std::size_t i = 0; i < kCommandLinkAddresses.size(); ++i) {
        const QString address = kCommandLinkAddresses[i];
        document.SetLink(address, links.contains(static_cast<CommandLink>(i)) ? address : QString());
    }
    for (const char16_t* page : kHelpPages) {
        const QString path = QString::fromUtf16(page);
        document.SetLink(u"help:"_s + path, HelpUrl(path).toString(QUrl::FullyEncoded));
    }
}

} // namespace

void RenderDashboard(CDashboardDocument& document, const DashboardStatus& status)
{
    RenderLinks(document, status.links);
    if (status.server.isRead) {
        ServerRendering(document, status.server).Render();
        RenderUpdate(document, status);
    } else {
        RenderFailure(document, status);
    }
}

} // namespace quenvolta
