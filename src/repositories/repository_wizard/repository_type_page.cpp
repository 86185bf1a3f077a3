#include "repositories/repository_wizard/repository_type_page.h"

#include "model/model.h"
#include "repositories/repository_wizard/repository_wizard_interface.h"
#include "ui_repository_type_page.h"

namespace quenvolta::RepositoryWizard
{

namespace
{

constexpr int kTopic = 2068;

} // namespace

CRepositoryTypePage::CRepositoryTypePage(IcRepositoryWizard& wizard)
    : CWizardPage(kTopic)
    , m_wizard(wizard)
    , m_ui(std::make_unique<Ui::RepositoryTypePage>())
{
    m_ui->setupUi(this);
}

CRepositoryTypePage::~CRepositoryTypePage() = default;

bool CRepositoryTypePage::IsFsfs() const
{
    return m_ui->fsfs->isChecked();
}

bool CRepositoryTypePage::IsQdfs() const
{
    return m_ui->qdfs->isChecked();
}

void CRepositoryTypePage::OnActivate()
{
    CModel& model = m_wizard.GetModel();
    const bool qdfs = model.HasCapability(ServerCapability::kQdfs);
    m_ui->qdfs->setEnabled(qdfs);
    m_ui->qdfsText->setEnabled(qdfs);
    if (!qdfs)
        m_ui->fsfs->setChecked(true);
    m_ui->locksNote->setVisible(qdfs && !model.HasCapability(ServerCapability::kRepositoryLocks));
}

} // namespace quenvolta::RepositoryWizard
