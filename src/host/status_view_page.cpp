#include "host/status_view_page.h"

#include "dashboard/service_state_text.h"
#include "host/page_fonts.h"
#include "host/status_texts.h"
#include "ui/icons.h"
#include "ui/string_table.h"
#include "ui_status_view_page.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int kServerIcon = 202;

} // namespace

StatusViewPage::StatusViewPage(QWidget* parent)
    : QScrollArea(parent)
    , m_ui(std::make_unique<Ui::StatusViewPage>())
{
    m_ui->setupUi(this);
    m_ui->serverIcon->setPixmap(IconResource(kServerIcon).pixmap(kPageIconSize, devicePixelRatioF()));
    m_ui->failureIcon->setPixmap(IconNamed(u"error"_s).pixmap(kPageIconSize, devicePixelRatioF()));
    SetTitleFont(*m_ui->serverTitle);
    SetTitleFont(*m_ui->failureTitle);
    m_ui->contents->setBackgroundRole(QPalette::Base);
    m_ui->failureText->document()->setDocumentMargin(0);
    m_ui->server->hide();
    m_ui->failure->hide();
}

StatusViewPage::~StatusViewPage() = default;

void StatusViewPage::ShowStatus(const CStatusSnapshot& status)
{
    m_ui->server->setVisible(status.isRead);
    m_ui->failure->setVisible(!status.isRead && status.error != StatusError::None);
    if (status.isRead)
        ShowServer(status);
    else
        ShowFailure(status);
}

void StatusViewPage::ShowServer(const CStatusSnapshot& status)
{
    m_ui->serverTitle->setText(
        LoadString(StringId::kServerTitle, LoadString(StringId::kCaption), status.settings.serverName));
    m_ui->httpService->setText(ServiceStateText(status.httpServiceState));
    ShowRow(*m_ui->qdfsService, status.qdfsService ? QdfsServiceText(*status.qdfsService) : QString());
    ShowRow(*m_ui->url, status.settings.url);
    m_ui->repositories->setText(RepositoriesText(status));
    m_ui->authentication->setText(AuthenticationText(status));
    m_ui->logging->setText(LoggingText(status.settings));
    ShowRow(*m_ui->version, status.versions.version);
    ShowRow(*m_ui->subversionVersion, status.versions.subversionVersion);
    ShowRow(*m_ui->apacheVersion, status.versions.apacheVersion);
}

void StatusViewPage::ShowFailure(const CStatusSnapshot& status)
{
    m_ui->failureTitle->setText(FailureTitle(status.error));
    m_ui->failureText->setPlainText(status.errorText);
    const QString advice = FailureAdvice(status.error);
    m_ui->failureAdvice->setText(advice);
    m_ui->failureAdvice->setVisible(!advice.isEmpty());
}

void StatusViewPage::ShowRow(QLabel& value, const QString& text)
{
    value.setText(text);
    m_ui->rows->setRowVisible(&value, !text.isEmpty());
}

} // namespace quenvolta
