#pragma once

#include "model/server_settings.h"
#include "repositories/repository_wizard/repository_wizard_interface.h"
#include "ui/wizard_sheet.h"

#include <QHash>

#include <functional>

namespace quenvolta
{
class IcPreferences;
}

namespace quenvolta::RepositoryWizard
{

class CAdjustReplicationSettings;
class CAdjustSvnPermissionsPage;
class CAdjustWinPermissionsPage;
class CMasterImportOptionsPage;
class CMasterStructurePage;
class CNamePage;
class CQdfsRolePage;
class CRepositoryTypePage;
class CSlaveNamePage;
class CSlaveSettingsPage;
class CStructurePage;
class CSummaryPage;

/// Creates a repository: one of its own, a distributed master or a slave.
class CRepositoryWizard final : public CWizardSheet, private IcRepositoryWizard
{
    Q_OBJECT

public:
    /// Reads the server's settings, which may throw. The model and the preferences must outlive the wizard.
    CRepositoryWizard(QWidget* parent, CModel& model, IcPreferences& preferences);
    ~CRepositoryWizard() override;

    int nextId() const override;

protected:
    void initializePage(int id) override;

private:
    RepositoryType GetRepositoryType() const override;
    InitialContent GetInitialContent() const override;
    bool IsMasterRole() const override;
    QString GetMasterServer() const override;
    QString GetMasterRepository() const override;
    QString GetRepositoryName() const override;
    QString GetRepositoryUrl() const override;
    PermissionList GetInitialPermissions() const override;
    QString GetServerComputerName() const override;
    bool IsWindowsAuthentication() const override { return m_settings.windowsAuthentication; }
    QString GetRepositoriesRootSetting() const override { return m_settings.repositoriesRoot; }
    bool RepositoryExists(const QString& name) const override;
    CModel& GetModel() const override { return m_model; }
    void CreateRepository() override;

    bool IsFsfs() const { return GetRepositoryType() == RepositoryType::Fsfs; }
    bool Imports() const { return GetInitialContent() == InitialContent::Import; }
    int PermissionsPage() const;
    NewRepository Choices() const;
    QString Create(const NewRepository& repository);
    QString CreateFsfs(const NewRepository& repository);
    QString CreateMaster(const NewRepository& repository);
    QString ImportMaster(const NewRepository& repository);
    QString CreateSlave(const NewRepository& repository);

    CModel& m_model;
    ServerSettings m_settings;
    CRepositoryTypePage* m_type;
    CQdfsRolePage* m_role;
    CSlaveSettingsPage* m_slaveSettings;
    CSlaveNamePage* m_slaveName;
    CNamePage* m_name;
    CStructurePage* m_structure;
    CMasterStructurePage* m_masterStructure;
    CMasterImportOptionsPage* m_importOptions;
    CAdjustSvnPermissionsPage* m_svnPermissions;
    CAdjustWinPermissionsPage* m_winPermissions;
    CAdjustReplicationSettings* m_replication;
    CSummaryPage* m_summary;
    QHash<int, std::function<int()>> m_following;
    QString m_failedName; // whose creation began and failed
};

} // namespace quenvolta::RepositoryWizard
