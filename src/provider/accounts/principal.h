#pragma once

#include <QHash>
#include <QList>
#include <QString>

#include <cstdint>
#include <tuple>

namespace quenvolta
{

/// Whom a permission is for. The server's own users and groups, and the accounts of the system it runs on.
enum class PrincipalKind { Everyone, User, Group, SystemAccount };

struct Principal {
    PrincipalKind kind = PrincipalKind::Everyone;
    /// The user's or group's name, a system account's security identifier, nothing for Everyone.
    QString name;

    bool operator==(const Principal&) const = default;
    bool operator<(const Principal& other) const { return std::tie(kind, name) < std::tie(other.kind, other.name); }
};

inline std::size_t qHash(const Principal& account, std::size_t seed = 0)
{
    return qHashMulti(seed, static_cast<int>(account.kind), account.name);
}

/// What a permission allows; the numbers are the contract's.
enum class Access : std::uint32_t { None = 0, Read = 1, ReadWrite = 2 };

struct Permission {
    Principal account;
    Access access = Access::None;

    bool operator==(const Permission&) const = default;
};

using PermissionList = QList<Permission>;

/// What a list of permissions is set on: the whole server (both empty), or a path in a repository ("/" is the
/// repository itself).
struct SecuredPlace {
    QString repository;
    QString path;

    bool IsServer() const { return repository.isEmpty(); }
    bool operator==(const SecuredPlace&) const = default;
    bool operator<(const SecuredPlace& other) const
    {
        return std::tie(repository, path) < std::tie(other.repository, other.path);
    }
};

} // namespace quenvolta
