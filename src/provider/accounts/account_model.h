#pragma once

#include "provider/accounts/principal.h"

#include <QByteArray>
#include <QHash>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

namespace quenvolta
{

/// The server's users, groups and permissions as values, always whole: every member and every account of a permission
/// exists, no group is a member of itself. Changes that would break this, and names that aren't allowed, are
/// ProviderErrors and change nothing.
class AccountModel
{
public:
    /// Users and Groups only, in the order in which they were given.
    using Members = QList<Principal>;

    /// In the order of the names' code units.
    QStringList Users() const { return m_users.keys(); }
    bool HasUser(const QString& name) const { return m_users.contains(name); }
    /// WBEM_E_NOT_FOUND.
    QByteArray PasswordHash(const QString& user) const;
    const QMap<QString, QByteArray>& PasswordHashes() const { return m_users; }
    void AddUser(const QString& name, const QByteArray& passwordHash);
    void SetPasswordHash(const QString& user, const QByteArray& passwordHash);
    /// Removes it from the groups and the permissions too.
    void RemoveUser(const QString& name);

    QStringList Groups() const { return m_groups.keys(); }
    bool HasGroup(const QString& name) const { return m_groups.contains(name); }
    /// WBEM_E_NOT_FOUND.
    Members GroupMembers(const QString& group) const;
    void AddGroup(const QString& name, const Members& members);
    /// WBEM_E_NOT_FOUND for the group or a member, 0x80070423 for members that form a cycle.
    void SetGroupMembers(const QString& group, const Members& members);
    /// Removes it from the other groups and the permissions too.
    void RemoveGroup(const QString& name);
    /// The users of every group, its groups' users among them, sorted.
    QMap<QString, QStringList> UsersOfGroups() const;

    /// What is set on the place itself, in the order in which it was set.
    PermissionList Permissions(const SecuredPlace& place) const { return m_permissions.value(place); }
    bool HasPermissions(const SecuredPlace& place) const { return m_permissions.contains(place); }
    /// The paths in the repository that HasPermissions.
    QSet<QString> SecuredPaths(const QString& repository) const;
    const QMap<SecuredPlace, PermissionList>& AllPermissions() const { return m_permissions; }
    /// An empty list removes what was set. WBEM_E_NOT_FOUND for an unknown account, WBEM_E_INVALID_PARAMETER for an
    /// account named twice, a level that isn't one, or a place that rules can't express.
    void SetPermissions(const SecuredPlace& place, const PermissionList& permissions);

    /// Gives the repository `to` the permissions of `from`, and no others.
    void CopyRepository(const QString& from, const QString& to);
    void RemoveRepository(const QString& name);
    /// Removes the permissions of the path and of all below it.
    void RemovePath(const QString& repository, const QString& path);
    bool KnowsRepository(const QString& name) const;

    bool operator==(const AccountModel&) const = default;

private:
    void CheckMembers(const QString& group, const Members& members) const;
    bool Reaches(const QString& from, const QString& group) const;
    void RemoveAccount(const Principal& account);
    bool Exists(const Principal& account) const;

    QMap<QString, QByteArray> m_users; // with their passwords' hashes
    QMap<QString, Members> m_groups;
    QMap<SecuredPlace, PermissionList> m_permissions; // no empty lists
};

/// The place in words, for messages.
QString DescribePlace(const SecuredPlace& place);

} // namespace quenvolta
