#include "async/activity_kind.h"
#include "async/async_call_monitor_dlg.h"
#include "foundation/simple_exception.h"
#include "model/model.h"
#include "repositories/repository_wizard/adjust_replication_settings.h"
#include "repositories/repository_wizard/master_import_options_page.h"
#include "repositories/repository_wizard/master_structure_page.h"
#include "repositories/repository_wizard/repository_summary.h"
#include "repositories/repository_wizard/repository_wizard.h"
#include "repositories/repository_wizard/structure_page.h"
#include "repositories/repository_wizard/summary_page.h"

// What the wizard does when its choices are made.

namespace quenvolta::RepositoryWizard
{

using namespace Qt::StringLiterals;

void CRepositoryWizard::CreateRepository()
{
    const NewRepository repository = Choices();
    // What an attempt before this one has created stays, and a second one can't create it.
    if (repository.name == m_failedName && m_model.RepositoryExists(repository.name))
        throw SimpleException::FromText(LoadString(StringId::kRepositoryExists, repository.name));
    m_failedName = repository.name;
    m_summary->SetText(Create(repository));
    m_failedName.clear();
}

NewRepository CRepositoryWizard::Choices() const
{
    return {.name = GetRepositoryName(),
            .singleProject =
                IsFsfs() ? m_structure->IsSingleProject() : GetInitialContent() == InitialContent::SingleProject,
            .permissions = GetInitialPermissions(),
            .replicators = m_replication->Replicators(),
            .importPath = m_masterStructure->ImportPath(),
            .importOptions = m_importOptions->Options(),
            .masterServer = GetMasterServer(),
            .masterRepository = GetMasterRepository()};
}

QString CRepositoryWizard::Create(const NewRepository& repository)
{
    if (IsFsfs())
        return CreateFsfs(repository);
    if (!IsMasterRole())
        return CreateSlave(repository);
    return Imports() ? ImportMaster(repository) : CreateMaster(repository);
}

QString CRepositoryWizard::CreateFsfs(const NewRepository& repository)
{
    m_model.CreateRepository(repository.name, repository.singleProject);
    m_model.SetSecurity({repository.name, u"/"_s}, repository.permissions);
    return RepositorySummary(m_model, repository, GetRepositoryUrl()).Fsfs();
}

QString CRepositoryWizard::CreateMaster(const NewRepository& repository)
{
    m_model.CreateQdfsMaster(repository.name, repository.singleProject);
    m_model.SetSecurity({repository.name, u"/"_s}, repository.permissions);
    m_model.SetReplicationSettings(repository.name, {true, repository.replicators});
    return RepositorySummary(m_model, repository, GetRepositoryUrl()).Master();
}

QString CRepositoryWizard::ImportMaster(const NewRepository& repository)
{
    CAsyncCallMonitorDlg progress(this, ProgressTextsOf(ActivityKind::ImportMaster));
    const ImportOptions& options = repository.importOptions;
    m_model.ImportQdfsMaster(repository.name, repository.importPath, options.permissions, options.delegation,
                             options.hooks, progress);
    m_model.SetReplicationSettings(repository.name, {true, repository.replicators});
    return RepositorySummary(m_model, repository, GetRepositoryUrl()).ImportedMaster();
}

QString CRepositoryWizard::CreateSlave(const NewRepository& repository)
{
    m_model.CreateQdfsSlave(repository.name, repository.masterServer, repository.masterRepository);
    return RepositorySummary(m_model, repository, GetRepositoryUrl()).Slave();
}

} // namespace quenvolta::RepositoryWizard
