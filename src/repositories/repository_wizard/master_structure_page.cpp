#include "repositories/repository_wizard/master_structure_page.h"

#include "model/model.h"
#include "repositories/repository_wizard/repository_wizard_interface.h"
#include "repositories/server_paths.h"
#include "ui_master_structure_page.h"

#include <QFileDialog>

namespace quenvolta::RepositoryWizard
{

namespace
{

constexpr int kTopic = 2052;

} // namespace

CMasterStructurePage::CMasterStructurePage(IcRepositoryWizard& wizard)
    : CWizardPage(kTopic)
    , m_wizard(wizard)
    , m_ui(std::make_unique<Ui::MasterStructurePage>())
{
    m_ui->setupUi(this);
    connect(m_ui->import, &QRadioButton::toggled, this, &CMasterStructurePage::UpdatePathField);
    connect(m_ui->path, &QLineEdit::textChanged, this, &CMasterStructurePage::completeChanged);
    connect(m_ui->browse, &QPushButton::clicked, this, &CMasterStructurePage::Browse);
    UpdatePathField();
}

CMasterStructurePage::~CMasterStructurePage() = default;

InitialContent CMasterStructurePage::Content() const
{
    if (m_ui->import->isChecked())
        return InitialContent::Import;
    return m_ui->singleProject->isChecked() ? InitialContent::SingleProject : InitialContent::Empty;
}

QString CMasterStructurePage::ImportPath() const
{
    return m_ui->path->text();
}

void CMasterStructurePage::OnActivate()
{
    // The import reads a folder of the managed computer, which can be chosen there alone.
    m_ui->import->setEnabled(m_wizard.GetServerComputerName().isEmpty());
}

bool CMasterStructurePage::isComplete() const
{
    return Content() != InitialContent::Import || !ImportPath().isEmpty();
}

bool CMasterStructurePage::OnNext()
{
    if (Content() != InitialContent::Import)
        return true;
    if (!IsPathOnServer(ImportPath(), m_wizard.GetRepositoriesRootSetting()))
        return Refuse(*m_ui->path, StringId::kImportPathNotAbsolute);
    constexpr std::uint32_t kFsfsRepository = 0;
    if (m_wizard.GetModel().GetImportSourceType(ImportPath()) != kFsfsRepository)
        return Refuse(*m_ui->path, StringId::kImportPathNotFsfs);
    return true;
}

void CMasterStructurePage::Browse()
{
    const QString folder = QFileDialog::getExistingDirectory(this, {}, ImportPath());
    if (!folder.isEmpty())
        m_ui->path->setText(folder);
}

void CMasterStructurePage::UpdatePathField()
{
    const bool importing = m_ui->import->isChecked();
    m_ui->path->setEnabled(importing);
    m_ui->browse->setEnabled(importing);
    Q_EMIT completeChanged();
}

} // namespace quenvolta::RepositoryWizard
