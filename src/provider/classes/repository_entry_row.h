#pragma once

#include "provider/accounts/account_model.h"
#include "provider/instance_row.h"
#include "provider/svn/svn_repository.h"

#include <QSet>
#include <QString>

#include <optional>

namespace quenvolta
{

/// Entries of one repository as objects, one at a time: what they have in common is put together once.
class RepositoryEntryRow
{
public:
    /// `repositoryUrl` is the repository's address without a slash at its end.
    RepositoryEntryRow(const ClassDefinitionPtr& definition, const QString& repository, const QString& repositoryUrl,
                       const AccountModel& accounts);

    /// The entry's object; the next call changes it.
    const InstanceRow& Of(const RepositoryEntry& entry);

private:
    void EnterFolder(const QString& parentPath);

    InstanceRow m_row;
    int m_path;
    int m_kind;
    int m_name;
    int m_url;
    int m_inheritedOnly;
    QString m_repositoryUrl;
    QSet<QString> m_securedPaths;
    std::optional<QString> m_folder; // the parent that the row was last made for
    QString m_folderUrl;             // what stands in front of the entry's name
};

} // namespace quenvolta
