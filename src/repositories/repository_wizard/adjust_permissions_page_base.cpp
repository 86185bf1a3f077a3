#include "repositories/repository_wizard/adjust_permissions_page_base.h"

#include "accounts/security_page.h"
#include "model/model.h"
#include "repositories/repository_wizard/repository_wizard_interface.h"
#include "ui/property_sheet.h"
#include "ui_adjust_permissions_page.h"

namespace quenvolta::RepositoryWizard
{

namespace
{

constexpr int kTopic = 2037;

} // namespace

CAdjustPermissionsPageBase::CAdjustPermissionsPageBase(IcRepositoryWizard& wizard, const QString& explicitOption,
                                                       int note)
    : CWizardPage(kTopic)
    , m_wizard(wizard)
    , m_host(wizard)
    , m_ui(std::make_unique<Ui::AdjustPermissionsPage>())
{
    m_ui->setupUi(this);
    m_ui->explicitAccess->setText(explicitOption);
    m_ui->note->setText(LoadString(note));
    connect(m_ui->custom, &QPushButton::clicked, this, [this] { Run([this] { Customize(); }); });
}

CAdjustPermissionsPageBase::~CAdjustPermissionsPageBase() = default;

PermissionList CAdjustPermissionsPageBase::Permissions() const
{
    if (m_ui->explicitAccess->isChecked())
        return {{ExplicitAccount(), AccessLevel::ReadWrite}};
    return m_ui->customized->isChecked() ? m_host.Kept() : PermissionList{};
}

void CAdjustPermissionsPageBase::OnActivate()
{
    m_ui->defaultAccess->setText(LoadString(DefaultOptionText()));
    m_ui->explicitAccess->setChecked(true);
    m_ui->explicitAccess->setFocus();
}

bool CAdjustPermissionsPageBase::OnNext()
{
    if (isCommitPage())
        m_wizard.CreateRepository();
    return true;
}

void CAdjustPermissionsPageBase::SetExplicitOption(const QString& text, bool enabled)
{
    m_ui->explicitAccess->setText(text);
    m_ui->explicitAccess->setEnabled(enabled);
    if (enabled || !m_ui->explicitAccess->isChecked())
        return;
    m_ui->defaultAccess->setChecked(true);
    m_ui->defaultAccess->setFocus();
}

void CAdjustPermissionsPageBase::Customize()
{
    CPropertySheet sheet(this, LoadString(StringId::kCustomizePermissions), CPropertySheet::ApplyButton::Without);
    sheet.AddPage(std::make_unique<CSecurityPage>(m_host));
    if (sheet.exec() == QDialog::Accepted)
        m_ui->customized->setChecked(true);
}

int CAdjustPermissionsPageBase::DefaultOptionText() const
{
    // On servers of level 2, permissions of the whole server exist for Windows accounts alone.
    const std::uint32_t level = m_wizard.GetModel().GetFeatureLevel();
    const bool inherits = level == 0 || (level == 2 && m_wizard.IsWindowsAuthentication());
    return inherits ? StringId::kNoSpecificPermissions : StringId::kNobodyHasAccess;
}

} // namespace quenvolta::RepositoryWizard
