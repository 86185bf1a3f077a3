#pragma once

#include "model/account.h"

#include <QIcon>

namespace quenvolta
{

/// The small icons of accounts by their kind, read once.
class AccountIcons
{
public:
    AccountIcons();

    /// `isExplicit` marks an account that has an entry of its own in a permission list.
    const QIcon& IconOf(AccountKind kind, bool isExplicit = false) const;

private:
    struct Pair {
        QIcon plain;
        QIcon marked;
    };

    Pair m_groups; // and everyone
    Pair m_users;  // and Windows accounts
};

} // namespace quenvolta
