#include "repositories/repository_wizard/qdfs_role_page.h"

#include "ui_qdfs_role_page.h"

namespace quenvolta::RepositoryWizard
{

namespace
{

constexpr int kTopic = 2063;

} // namespace

CQdfsRolePage::CQdfsRolePage()
    : CWizardPage(kTopic)
    , m_ui(std::make_unique<Ui::QdfsRolePage>())
{
    m_ui->setupUi(this);
}

CQdfsRolePage::~CQdfsRolePage() = default;

bool CQdfsRolePage::IsMaster() const
{
    return m_ui->master->isChecked();
}

} // namespace quenvolta::RepositoryWizard
