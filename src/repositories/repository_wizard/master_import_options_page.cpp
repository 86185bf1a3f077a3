#include "repositories/repository_wizard/master_import_options_page.h"

#include "ui_master_import_options_page.h"

namespace quenvolta::RepositoryWizard
{

CMasterImportOptionsPage::CMasterImportOptionsPage()
    : m_ui(std::make_unique<Ui::MasterImportOptionsPage>())
{
    m_ui->setupUi(this);
}

CMasterImportOptionsPage::~CMasterImportOptionsPage() = default;

ImportOptions CMasterImportOptionsPage::Options() const
{
    return {m_ui->permissions->isChecked(), m_ui->delegation->isChecked(), m_ui->hooks->isChecked()};
}

} // namespace quenvolta::RepositoryWizard
