#include "repositories/repository_wizard/repository_summary.h"

#include "accounts/access_level_text.h"
#include "accounts/windows_account_names.h"
#include "ui/string_table.h"

namespace quenvolta::RepositoryWizard
{

namespace
{

// In the order of the entries.
QStringList ShownNames(CModel& model, const PermissionList& permissions)
{
    QStringList sids;
    for (const PermissionEntry& entry : permissions) {
        if (entry.account.kind == AccountKind::WindowsAccount)
            sids.append(entry.account.name);
    }
    QStringList windowsNames = WindowsAccountNames(model, sids);
    QStringList names;
    for (const auto& [account, level] : permissions) {
        if (account.kind == AccountKind::WindowsAccount)
            names.append(windowsNames.takeFirst());
        else
            names.append(account.kind == AccountKind::Everyone ? LoadString(StringId::kEveryone) : account.name);
    }
    return names;
}

} // namespace

RepositorySummary::RepositorySummary(CModel& model, const NewRepository& repository, const QString& url)
    : m_model(model)
    , m_repository(repository)
    , m_url(url)
{
}

QString RepositorySummary::Fsfs() const
{
    return LoadString(StringId::kSummaryFsfs, m_repository.name, m_url, PermissionLines());
}

QString RepositorySummary::Master() const
{
    return LoadString(StringId::kSummaryMaster, m_repository.name, m_url, PermissionLines(), ReplicatorLines());
}

QString RepositorySummary::ImportedMaster() const
{
    return LoadString(StringId::kSummaryImportedMaster, m_repository.name, m_url, m_repository.importPath,
                      ReplicatorLines());
}

QString RepositorySummary::Slave() const
{
    return LoadString(StringId::kSummarySlave, m_repository.name, m_url, m_repository.masterServer,
                      m_repository.masterRepository);
}

QString RepositorySummary::PermissionLines() const
{
    if (m_repository.permissions.isEmpty())
        return LoadString(StringId::kSummaryNoPermissions);
    const QStringList names = ShownNames(m_model, m_repository.permissions);
    QString lines;
    for (qsizetype i = 0; i < names.size(); ++i)
        lines += LoadString(StringId::kSummaryPermission, names[i],
                            AccessLevelText(m_repository.permissions[i].accessLevel));
    return lines;
}

QString RepositorySummary::ReplicatorLines() const
{
    if (m_repository.replicators.isEmpty())
        return LoadString(StringId::kSummaryNoReplicators);
    QString lines;
    for (const QString& name : WindowsAccountNames(m_model, m_repository.replicators))
        lines += LoadString(StringId::kSummaryReplicator, name);
    return lines;
}

} // namespace quenvolta::RepositoryWizard
