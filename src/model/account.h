#pragma once

#include <QHashFunctions>
#include <QString>

namespace quenvolta
{

enum class AccountKind {
    Everyone = 0,
    User = 1,  ///< a Subversion user
    Group = 2, ///< a Subversion group
    WindowsAccount = 3,
};

/// Whom a permission is for.
struct Account {
    AccountKind kind = AccountKind::Everyone;
    /// The user's or group's name, a Windows account's security identifier; empty for everyone.
    QString name = {};

    bool operator==(const Account&) const = default;
};

inline size_t qHash(const Account& account, size_t seed = 0)
{
    return qHashMulti(seed, static_cast<int>(account.kind), account.name);
}

} // namespace quenvolta
