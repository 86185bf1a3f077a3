#pragma once

#include "platform/wbem/class_table.h"
#include "provider/accounts/principal.h"
#include "provider/instance_row.h"

#include <QList>
#include <QString>

namespace quenvolta
{

/// Accounts and permissions as objects of the contract, and back. What can't be one is a ProviderError.
class PermissionObjects
{
public:
    explicit PermissionObjects(const ClassTable& classes);

    /// A Quenvolta_PermissionEntry.
    InstanceRow ToRow(const Permission& permission) const;
    /// A Quenvolta_User or Quenvolta_Group.
    InstanceRow ToRow(const Principal& account) const;

    /// `place` is named in errors.
    static PermissionList FromObjects(const QList<WbemObjectPtr>& objects, const SecuredPlace& place);

    /// The user or group that an object path means; `group` is named in errors.
    static Principal MemberFromPath(const QString& path, const QString& group);

    /// What the object of this path secures: the web service's object stands for the server. WBEM_E_INVALID_PARAMETER
    /// when it has no permissions.
    static SecuredPlace PlaceFromPath(const QString& path);

private:
    const ClassTable& m_classes;
    ClassDefinitionPtr m_entry;
};

} // namespace quenvolta
