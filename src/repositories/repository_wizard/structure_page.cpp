#include "repositories/repository_wizard/structure_page.h"

#include "ui_structure_page.h"

namespace quenvolta::RepositoryWizard
{

namespace
{

constexpr int kTopic = 2039;

} // namespace

CStructurePage::CStructurePage()
    : CWizardPage(kTopic)
    , m_ui(std::make_unique<Ui::StructurePage>())
{
    m_ui->setupUi(this);
}

CStructurePage::~CStructurePage() = default;

bool CStructurePage::IsSingleProject() const
{
    return m_ui->singleProject->isChecked();
}

} // namespace quenvolta::RepositoryWizard
