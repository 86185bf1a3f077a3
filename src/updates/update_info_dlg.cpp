#include "updates/update_info_dlg.h"

#include "ui_update_info_dlg.h"

#include <utility>

namespace quenvolta
{

CUpdateInfoDlg::CUpdateInfoDlg(QWidget* parent, const UpdateInfo& info, const QString& installedVersion,
                               UpdateSite site, Opener open)
    : CBaseDialog(parent)
    , m_info(info)
    , m_site(std::move(site))
    , m_open(std::move(open))
    , m_ui(std::make_unique<Ui::UpdateInfoDlg>())
{
    m_ui->setupUi(this);
    m_ui->message->setBackgroundRole(QPalette::Base);
    m_ui->message->setText(LoadString(StringId::kUpdateIsAvailable, info.version));
    m_ui->installedVersion->setText(installedVersion);
    m_ui->availableVersion->setText(info.version);
    connect(m_ui->moreLink, &QLabel::linkActivated, this, [this] { OpenPage(m_info.learnMorePath); });
    connect(m_ui->download, &QPushButton::clicked, this, [this] {
        OpenPage(m_info.downloadPath);
        accept();
    });
    connect(m_ui->cancel, &QPushButton::clicked, this, &QDialog::reject);
}

CUpdateInfoDlg::~CUpdateInfoDlg() = default;

void CUpdateInfoDlg::OpenPage(const QString& path)
{
    Run([&] { m_open(m_site.PageUrl(path)); });
}

} // namespace quenvolta
