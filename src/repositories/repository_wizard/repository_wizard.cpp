#include "repositories/repository_wizard/repository_wizard.h"

#include "model/model.h"
#include "repositories/repository_wizard/adjust_replication_settings.h"
#include "repositories/repository_wizard/adjust_svn_permissions_page.h"
#include "repositories/repository_wizard/adjust_win_permissions_page.h"
#include "repositories/repository_wizard/master_import_options_page.h"
#include "repositories/repository_wizard/master_structure_page.h"
#include "repositories/repository_wizard/name_page.h"
#include "repositories/repository_wizard/qdfs_role_page.h"
#include "repositories/repository_wizard/repository_type_page.h"
#include "repositories/repository_wizard/slave_name_page.h"
#include "repositories/repository_wizard/slave_settings_page.h"
#include "repositories/repository_wizard/structure_page.h"
#include "repositories/repository_wizard/summary_page.h"

namespace quenvolta::RepositoryWizard
{

namespace
{

enum Page {
    kType,
    kRole,
    kSlaveSettings,
    kSlaveName,
    kName,
    kStructure,
    kMasterStructure,
    kImportOptions,
    kSvnPermissions,
    kWinPermissions,
    kReplication,
    kSummary,
    kNone = -1,
};

} // namespace

CRepositoryWizard::CRepositoryWizard(QWidget* parent, CModel& model, IcPreferences& preferences)
    : CWizardSheet(parent, LoadString(StringId::kNewRepository))
    , m_model(model)
    , m_settings(model.GetServerSettings())
    , m_type(new CRepositoryTypePage(*this))
    , m_role(new CQdfsRolePage)
    , m_slaveSettings(new CSlaveSettingsPage(*this, preferences))
    , m_slaveName(new CSlaveNamePage(*this))
    , m_name(new CNamePage(*this))
    , m_structure(new CStructurePage)
    , m_masterStructure(new CMasterStructurePage(*this))
    , m_importOptions(new CMasterImportOptionsPage)
    , m_svnPermissions(new CAdjustSvnPermissionsPage(*this))
    , m_winPermissions(new CAdjustWinPermissionsPage(*this))
    , m_replication(new CAdjustReplicationSettings(*this))
    , m_summary(new CSummaryPage)
{
    AddPage(kType, m_type);
    AddPage(kRole, m_role);
    AddPage(kSlaveSettings, m_slaveSettings);
    AddPage(kSlaveName, m_slaveName);
    AddPage(kName, m_name);
    AddPage(kStructure, m_structure);
    AddPage(kMasterStructure, m_masterStructure);
    AddPage(kImportOptions, m_importOptions);
    AddPage(kSvnPermissions, m_svnPermissions);
    AddPage(kWinPermissions, m_winPermissions);
    AddPage(kReplication, m_replication);
    AddPage(kSummary, m_summary);
    const auto permissions = [this] { return PermissionsPage(); };
    m_following = {
        {kType, [this] { return IsFsfs() ? kName : kRole; }},
        {kRole, [this] { return IsMasterRole() ? kName : kSlaveSettings; }},
        {kSlaveSettings, [] { return kSlaveName; }},
        {kSlaveName, [] { return kSummary; }},
        {kName, [this] { return IsFsfs() ? kStructure : kMasterStructure; }},
        {kStructure, permissions},
        {kMasterStructure, [this] { return Imports() ? int{kImportOptions} : PermissionsPage(); }},
        {kImportOptions, [] { return kReplication; }},
        {kSvnPermissions, [this] { return IsFsfs() ? kSummary : kReplication; }},
        {kWinPermissions, [this] { return IsFsfs() ? kSummary : kReplication; }},
        {kReplication, [] { return kSummary; }},
        {kSummary, [] { return kNone; }},
    };
    MakeWorkPage(*m_slaveName);
    MakeWorkPage(*m_replication, LoadString(StringId::kCreateButton));
    MakeSummaryPage(*m_summary);
}

CRepositoryWizard::~CRepositoryWizard() = default;

int CRepositoryWizard::nextId() const
{
    const auto following = m_following.value(currentId());
    return following ? following() : kNone;
}

void CRepositoryWizard::initializePage(int id)
{
    CWizardSheet::initializePage(id);
    if (id != PermissionsPage())
        return;
    // A repository of its own needs no more answers.
    auto& permissions = static_cast<CWizardPage&>(*page(id));
    if (IsFsfs())
        MakeWorkPage(permissions, LoadString(StringId::kCreateButton));
    else
        permissions.setCommitPage(false);
}

int CRepositoryWizard::PermissionsPage() const
{
    return IsWindowsAuthentication() ? kWinPermissions : kSvnPermissions;
}

RepositoryType CRepositoryWizard::GetRepositoryType() const
{
    return !m_type->IsFsfs() && m_type->IsQdfs() ? RepositoryType::Qdfs : RepositoryType::Fsfs;
}

InitialContent CRepositoryWizard::GetInitialContent() const
{
    return m_masterStructure->Content();
}

bool CRepositoryWizard::IsMasterRole() const
{
    return m_role->IsMaster();
}

QString CRepositoryWizard::GetMasterServer() const
{
    return m_slaveSettings->MasterServer();
}

QString CRepositoryWizard::GetMasterRepository() const
{
    return m_slaveSettings->MasterRepository();
}

QString CRepositoryWizard::GetRepositoryName() const
{
    return IsFsfs() || IsMasterRole() ? m_name->Name() : m_slaveName->Name();
}

QString CRepositoryWizard::GetRepositoryUrl() const
{
    return m_model.BuildRepositoryUrl(GetRepositoryName());
}

PermissionList CRepositoryWizard::GetInitialPermissions() const
{
    return IsWindowsAuthentication() ? m_winPermissions->Permissions() : m_svnPermissions->Permissions();
}

QString CRepositoryWizard::GetServerComputerName() const
{
    return m_model.ComputerName();
}

bool CRepositoryWizard::RepositoryExists(const QString& name) const
{
    return m_model.RepositoryExists(name);
}

} // namespace quenvolta::RepositoryWizard
