#pragma once

#include "repositories/repository_wizard/choices.h"

namespace quenvolta
{
class CModel;
}

namespace quenvolta::RepositoryWizard
{

/// What the pages of the wizard know of each other, and of the server.
class IcRepositoryWizard
{
public:
    virtual ~IcRepositoryWizard() = default;
    virtual RepositoryType GetRepositoryType() const = 0;
    virtual InitialContent GetInitialContent() const = 0;
    /// Else that of a slave.
    virtual bool IsMasterRole() const = 0;
    virtual QString GetMasterServer() const = 0;
    virtual QString GetMasterRepository() const = 0;
    virtual QString GetRepositoryName() const = 0;
    virtual QString GetRepositoryUrl() const = 0;
    virtual PermissionList GetInitialPermissions() const = 0;
    /// Empty for the local computer.
    virtual QString GetServerComputerName() const = 0;
    virtual bool IsWindowsAuthentication() const = 0;
    virtual QString GetRepositoriesRootSetting() const = 0;
    virtual bool RepositoryExists(const QString& name) const = 0;
    virtual CModel& GetModel() const = 0;
    /// Creates what was chosen. What was created stays also when a later step fails, which is thrown.
    virtual void CreateRepository() = 0;
};

} // namespace quenvolta::RepositoryWizard
