#pragma once

#include "platform/registry/registry.h"

#include <QString>
#include <QStringList>

namespace quenvolta
{

/// The server-wide lists of accounts with a role.
enum class ServerRole { Administrators, Supervisors, ReplicationPartners };

/// The lists that each repository has of its own.
enum class RepositoryRole { Managers, Replicators };

/// Whether a repository may be managed by others, or replicated, and by whom.
struct RepositoryRoleSettings {
    bool enabled = false;
    QStringList accounts;

    bool operator==(const RepositoryRoleSettings&) const = default;
};

/// Lists of security identifiers, kept in the server's settings in the order in which they were given. Whoever writes
/// holds the DataLock; what isn't there reads as empty. Failures are Exceptions.
class RoleLists
{
public:
    /// `settings` must outlive it.
    explicit RoleLists(Registry& settings);

    QStringList Read(ServerRole role) const;
    void Write(ServerRole role, const QStringList& accounts);

    RepositoryRoleSettings Read(RepositoryRole role, const QString& repository) const;
    void Write(RepositoryRole role, const QString& repository, const RepositoryRoleSettings& settings);

    /// Forgets the lists of a repository: of one that is made, before it is there, and of one that was deleted. So
    /// nobody gets a role by a name that another repository had before.
    void Forget(const QString& repository);
    /// Gives a repository the lists of another one: before a rename, so that they are never missing; those of the old
    /// name are forgotten after it.
    void Copy(const QString& from, const QString& to);

private:
    void Write(const QString& key, const QString& name, const QStringList& list);

    Registry& m_settings;
};

} // namespace quenvolta
