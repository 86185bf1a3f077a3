#pragma once

#include "permission_cases.h"
#include "provider/accounts/account_model.h"

#include <QByteArray>
#include <QMap>

namespace quenvolta::permissioncases
{

/// The accounts and permissions of the cases; every user has the password of `hash`.
inline AccountModel Model(const QByteArray& hash)
{
    AccountModel model;
    for (const QString& user : Users())
        model.AddUser(user, hash);
    for (const Group& group : Groups()) {
        AccountModel::Members members;
        for (const QString& user : group.users)
            members.append({PrincipalKind::User, user});
        for (const QString& inner : group.groups)
            members.append({PrincipalKind::Group, inner});
        model.AddGroup(group.name, members);
    }
    QMap<SecuredPlace, PermissionList> lists;
    for (const Entry& entry : Entries()) {
        const PrincipalKind kind = entry.kind == '*'   ? PrincipalKind::Everyone
                                   : entry.kind == 'u' ? PrincipalKind::User
                                                       : PrincipalKind::Group;
        lists[{entry.repository, entry.path}].append({{kind, entry.account}, static_cast<Access>(entry.level)});
    }
    for (auto list = lists.cbegin(); list != lists.cend(); ++list)
        model.SetPermissions(list.key(), *list);
    return model;
}

} // namespace quenvolta::permissioncases
