#pragma once

#include "model/group_member.h"
#include "model/permission_entry.h"
#include "wmi/wmi_class_ref.h"
#include "wmi/wmi_object.h"

#include <QList>
#include <QStringList>

#include <array>

namespace quenvolta
{

/// Turns accounts and permission entries into the server's objects and back. A kind or a class that is none of
/// an account's is a ComException of the invalid-argument code.
class AccountMarshaller
{
public:
    AccountMarshaller(IcWMIClassRef& user, IcWMIClassRef& group, IcWMIClassRef& everyone, IcWMIClassRef& windowsAccount,
                      IcWMIClassRef& permissionEntry);

    WMIObject ToObject(const Account& account) const;
    Account ToAccount(const WMIObject& object) const;
    QList<WMIObject> ToObjects(const PermissionList& entries) const;
    PermissionList ToPermissions(const QList<WMIObject>& objects) const;
    /// Windows accounts by their security identifiers.
    QList<WMIObject> ToWindowsAccounts(const QStringList& identifiers) const;
    static QStringList ToIdentifiers(const QList<WMIObject>& windowsAccounts);
    /// Objects that are neither users nor groups are skipped.
    QList<GroupMember> ToGroupMembers(const QList<WMIObject>& objects) const;

private:
    std::array<IcWMIClassRef*, 4> m_accounts; // in the order in which an object's class is tested
    IcWMIClassRef& m_permissionEntry;
};

} // namespace quenvolta
