#pragma once

#include "repositories/repository_wizard/choices.h"

namespace quenvolta
{
class CModel;
}

namespace quenvolta::RepositoryWizard
{

/// Builds what the summary page says of a created repository.
class RepositorySummary
{
public:
    /// Asks the model for the names of Windows accounts; it must outlive the summary.
    RepositorySummary(CModel& model, const NewRepository& repository, const QString& url);

    QString Fsfs() const;
    QString Master() const;
    QString ImportedMaster() const;
    QString Slave() const;

private:
    QString PermissionLines() const;
    QString ReplicatorLines() const;

    CModel& m_model;
    const NewRepository& m_repository;
    QString m_url;
};

} // namespace quenvolta::RepositoryWizard
