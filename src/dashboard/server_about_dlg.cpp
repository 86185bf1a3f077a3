#include "dashboard/server_about_dlg.h"

#include "ui/icons.h"
#include "ui_server_about_dlg.h"

namespace quenvolta
{

namespace
{

constexpr int kServerIcon = 202;
constexpr QSize kLogoSize{64, 64};

} // namespace

CServerAboutDlg::CServerAboutDlg(QWidget* parent, const ServerVersionInfo& versions)
    : CBaseDialog(parent)
    , m_ui(std::make_unique<Ui::ServerAboutDlg>())
{
    m_ui->setupUi(this);
    m_ui->logo->setPixmap(IconResource(kServerIcon).pixmap(kLogoSize, devicePixelRatioF()));
    m_ui->name->setText(LoadString(StringId::kCaption));
    m_ui->version->setText(
        LoadString(StringId::kServerVersions, versions.version, versions.subversionVersion, versions.apacheVersion));
}

CServerAboutDlg::~CServerAboutDlg() = default;

} // namespace quenvolta
