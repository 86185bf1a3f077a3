#pragma once

#include "provider/accounts/account_model.h"
#include "provider/accounts/system_accounts.h"

#include <QMap>
#include <QString>
#include <QStringList>

namespace quenvolta
{

/// Which accounts sign in at the web service.
enum class SignIn { ServerUsers, SystemAccounts };

/// The permissions as a client meets them: users by the names that they sign in with, groups with all their users, and
/// only the accounts that can sign in at all.
struct AccessRules {
    struct Entry {
        PrincipalKind kind = PrincipalKind::Everyone; ///< never SystemAccount
        QString name;
        Access access = Access::None;
    };

    QMap<QString, QStringList> groups; ///< those that entries name, none of them empty; their users sorted
    QMap<SecuredPlace, QList<Entry>> places;

    static AccessRules Resolve(const AccountModel& model, SignIn signIn, const SystemAccounts& accounts);

    /// What `user` may do at a path: the meaning of the permissions, see docs/permissions.md.
    Access Evaluate(const QString& user, const QString& repository, const QString& path) const;

private:
    void DropNobody();
};

} // namespace quenvolta
