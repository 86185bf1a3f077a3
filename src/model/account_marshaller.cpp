#include "model/account_marshaller.h"

#include "foundation/com_exception.h"
#include "wmi/wmi_class.h"

#include <cstddef>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

struct AccountClass {
    AccountKind kind;
    QStringView className;
    QStringView nameProperty;
    /// What is written as the name of an account that has none.
    QStringView fixedName;
};

constexpr std::array kAccountClasses{
    AccountClass{AccountKind::User, u"Quenvolta_User", u"Name", {}},
    AccountClass{AccountKind::Group, u"Quenvolta_Group", u"Name", {}},
    AccountClass{AccountKind::Everyone, u"Quenvolta_Everyone", u"Name", u"Everyone"},
    AccountClass{AccountKind::WindowsAccount, u"Quenvolta_WindowsAccount", u"SID", {}},
};

} // namespace

AccountMarshaller::AccountMarshaller(IcWMIClassRef& user, IcWMIClassRef& group, IcWMIClassRef& everyone,
                                     IcWMIClassRef& windowsAccount, IcWMIClassRef& permissionEntry)
    : m_accounts{&user, &group, &everyone, &windowsAccount}
    , m_permissionEntry(permissionEntry)
{
}

WMIObject AccountMarshaller::ToObject(const Account& account) const
{
    for (std::size_t i = 0; i < kAccountClasses.size(); ++i) {
        const AccountClass& accountClass = kAccountClasses[i];
        if (accountClass.kind != account.kind)
            continue;
        WMIObject object = m_accounts[i]->GetClass().SpawnInstance();
        object.PutString(accountClass.nameProperty.toString(),
                         accountClass.fixedName.isEmpty() ? account.name : accountClass.fixedName.toString());
        return object;
    }
    throw ComException(E_INVALIDARG);
}

Account AccountMarshaller::ToAccount(const WMIObject& object) const
{
    for (const AccountClass& accountClass : kAccountClasses) {
        if (!object.InheritsFrom(accountClass.className.toString()))
            continue;
        return {accountClass.kind,
                accountClass.fixedName.isEmpty() ? object.GetString(accountClass.nameProperty.toString()) : QString{}};
    }
    throw ComException(E_INVALIDARG);
}

QList<WMIObject> AccountMarshaller::ToObjects(const PermissionList& entries) const
{
    QList<WMIObject> objects;
    objects.reserve(entries.size());
    for (const PermissionEntry& entry : entries) {
        WMIObject object = m_permissionEntry.GetClass().SpawnInstance();
        object.PutObject(u"Account"_s, ToObject(entry.account));
        object.PutInt32(u"AccessLevel"_s, static_cast<std::int32_t>(entry.accessLevel));
        objects.append(std::move(object));
    }
    return objects;
}

PermissionList AccountMarshaller::ToPermissions(const QList<WMIObject>& objects) const
{
    PermissionList entries;
    entries.reserve(objects.size());
    for (const WMIObject& object : objects) {
        entries.append(
            {ToAccount(object.GetObject(u"Account"_s)), static_cast<AccessLevel>(object.GetUInt32(u"AccessLevel"_s))});
    }
    return entries;
}

QList<WMIObject> AccountMarshaller::ToWindowsAccounts(const QStringList& identifiers) const
{
    QList<WMIObject> objects;
    objects.reserve(identifiers.size());
    for (const QString& identifier : identifiers)
        objects.append(ToObject({AccountKind::WindowsAccount, identifier}));
    return objects;
}

QStringList AccountMarshaller::ToIdentifiers(const QList<WMIObject>& windowsAccounts)
{
    QStringList identifiers;
    identifiers.reserve(windowsAccounts.size());
    for (const WMIObject& account : windowsAccounts)
        identifiers.append(account.GetString(u"SID"_s));
    return identifiers;
}

QList<GroupMember> AccountMarshaller::ToGroupMembers(const QList<WMIObject>& objects) const
{
    QList<GroupMember> members;
    for (const WMIObject& object : objects) {
        if (object.InheritsFrom(u"Quenvolta_Group"_s))
            members.append({GroupMemberKind::Group, object.GetString(u"Name"_s)});
        else if (object.InheritsFrom(u"Quenvolta_User"_s))
            members.append({GroupMemberKind::User, object.GetString(u"Name"_s)});
    }
    return members;
}

} // namespace quenvolta
