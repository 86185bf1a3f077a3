#include "provider/accounts/account_model.h"

#include "provider/accounts/account_names.h"
#include "provider/accounts/account_texts.h"
#include "provider/accounts/system_accounts.h"
#include "provider/provider_error.h"
#include "provider/svn/repository_names.h"

#include <QSet>

#include <algorithm>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr HRESULT kCircularDependency = HResultFromWin32(1059);

[[noreturn]] void Refuse(HRESULT code, const QString& description, const QString& summary = {})
{
    throw ProviderError(code, description, summary);
}

QString Show(QStringView name)
{
    return RepositoryNames::Show(name);
}

void CheckPlace(const SecuredPlace& place)
{
    if (place.IsServer())
        return;
    RepositoryNames::CheckName(place.repository);
    RepositoryNames::CheckPath(place.path);
    const auto has = [](const QString& text, QStringView characters) {
        return std::any_of(text.begin(), text.end(), [characters](QChar c) { return characters.contains(c); });
    };
    if (has(place.repository, u":[]"))
        Refuse(WBEM_E_INVALID_PARAMETER, accounttexts::kRepositoryUnfit.arg(Show(place.repository)));
    if (has(place.path, u"]"))
        Refuse(WBEM_E_INVALID_PARAMETER, accounttexts::kPathUnfit.arg(Show(place.repository), Show(place.path)));
}

} // namespace

QString DescribePlace(const SecuredPlace& place)
{
    if (place.IsServer())
        return accounttexts::kServerPlace.Whole();
    return place.path == "/"_L1 ? accounttexts::kRepositoryPlace.arg(Show(place.repository))
                                : accounttexts::kPathPlace.arg(Show(place.repository), Show(place.path));
}

QByteArray AccountModel::PasswordHash(const QString& user) const
{
    const auto found = m_users.constFind(user);
    if (found == m_users.cend())
        Refuse(WBEM_E_NOT_FOUND, accounttexts::kUserMissing.arg(Show(user)));
    return *found;
}

void AccountModel::AddUser(const QString& name, const QByteArray& passwordHash)
{
    AccountNames::CheckUser(name);
    if (HasUser(name))
        Refuse(WBEM_E_ALREADY_EXISTS, accounttexts::kUserExists.arg(Show(name)));
    m_users.insert(name, passwordHash);
}

void AccountModel::SetPasswordHash(const QString& user, const QByteArray& passwordHash)
{
    PasswordHash(user);
    m_users.insert(user, passwordHash);
}

void AccountModel::RemoveUser(const QString& name)
{
    PasswordHash(name);
    m_users.remove(name);
    RemoveAccount({PrincipalKind::User, name});
}

AccountModel::Members AccountModel::GroupMembers(const QString& group) const
{
    const auto found = m_groups.constFind(group);
    if (found == m_groups.cend())
        Refuse(WBEM_E_NOT_FOUND, accounttexts::kGroupMissing.arg(Show(group)));
    return *found;
}

void AccountModel::AddGroup(const QString& name, const Members& members)
{
    AccountNames::CheckGroup(name);
    if (HasGroup(name))
        Refuse(WBEM_E_ALREADY_EXISTS, accounttexts::kGroupExists.arg(Show(name)));
    CheckMembers(name, members);
    m_groups.insert(name, members);
}

void AccountModel::SetGroupMembers(const QString& group, const Members& members)
{
    GroupMembers(group);
    CheckMembers(group, members);
    m_groups.insert(group, members);
}

void AccountModel::RemoveGroup(const QString& name)
{
    GroupMembers(name);
    m_groups.remove(name);
    RemoveAccount({PrincipalKind::Group, name});
}

void AccountModel::CheckMembers(const QString& group, const Members& members) const
{
    QSet<Principal> seen;
    for (const Principal& member : members) {
        const bool isItself = member == Principal{PrincipalKind::Group, group};
        if (isItself || (member.kind == PrincipalKind::Group && Reaches(member.name, group)))
            Refuse(kCircularDependency, accounttexts::kCycle.arg(Show(group), Show(member.name)),
                   accounttexts::kCycleSummary.Whole());
        if (!Exists(member))
            Refuse(WBEM_E_NOT_FOUND, accounttexts::kMemberIsUnknown.arg(Show(group), Show(member.name)));
        if (seen.contains(member))
            Refuse(WBEM_E_INVALID_PARAMETER, accounttexts::kMemberTwice.arg(Show(group), Show(member.name)));
        seen.insert(member);
    }
}

bool AccountModel::Reaches(const QString& from, const QString& group) const
{
    QSet<QString> seen{from};
    QStringList waiting{from};
    while (!waiting.isEmpty()) {
        for (const Principal& member : m_groups.value(waiting.takeLast())) {
            if (member.kind != PrincipalKind::Group || seen.contains(member.name))
                continue;
            if (member.name == group)
                return true;
            seen.insert(member.name);
            waiting.append(member.name);
        }
    }
    return false;
}

QMap<QString, QStringList> AccountModel::UsersOfGroups() const
{
    // Members before the groups that hold them; each group is put together once, however it is nested.
    QHash<QString, qsizetype> unresolved;
    QHash<QString, QStringList> holders;
    QStringList ready;
    for (auto group = m_groups.cbegin(); group != m_groups.cend(); ++group) {
        qsizetype inner = 0;
        for (const Principal& member : *group) {
            if (member.kind == PrincipalKind::Group) {
                holders[member.name].append(group.key());
                ++inner;
            }
        }
        unresolved.insert(group.key(), inner);
        if (inner == 0)
            ready.append(group.key());
    }
    QMap<QString, QStringList> users;
    while (!ready.isEmpty()) {
        const QString group = ready.takeLast();
        QStringList& all = users[group];
        for (const Principal& member : m_groups[group]) {
            if (member.kind == PrincipalKind::User)
                all.append(member.name);
            else
                all.append(users.value(member.name));
        }
        std::sort(all.begin(), all.end());
        all.erase(std::unique(all.begin(), all.end()), all.end());
        for (const QString& holder : holders.value(group)) {
            if (--unresolved[holder] == 0)
                ready.append(holder);
        }
    }
    return users;
}

void AccountModel::SetPermissions(const SecuredPlace& place, const PermissionList& permissions)
{
    if (permissions.isEmpty()) {
        m_permissions.remove(place);
        return;
    }
    CheckPlace(place);
    QSet<Principal> seen;
    for (const Permission& permission : permissions) {
        const Principal& account = permission.account;
        const QString shown =
            account.kind == PrincipalKind::Everyone ? accounttexts::kEveryone.Whole() : Show(account.name);
        if (account.kind == PrincipalKind::SystemAccount && !SystemAccountId::Parse(account.name))
            Refuse(WBEM_E_INVALID_PARAMETER, accounttexts::kForeignAccount.arg(DescribePlace(place), shown));
        if (!Exists(account))
            Refuse(WBEM_E_NOT_FOUND, accounttexts::kUnknownAccount.arg(DescribePlace(place), shown));
        if (permission.access > Access::ReadWrite)
            Refuse(WBEM_E_INVALID_PARAMETER,
                   accounttexts::kUnknownAccess.arg(DescribePlace(place), shown,
                                                    QString::number(static_cast<quint32>(permission.access))));
        if (seen.contains(account))
            Refuse(WBEM_E_INVALID_PARAMETER, accounttexts::kAccountTwice.arg(DescribePlace(place), shown));
        seen.insert(account);
    }
    m_permissions.insert(place, permissions);
}

void AccountModel::CopyRepository(const QString& from, const QString& to)
{
    RemoveRepository(to);
    QList<std::pair<SecuredPlace, PermissionList>> copies;
    for (auto each = m_permissions.lowerBound({from, {}}); each != m_permissions.end() && each.key().repository == from;
         ++each)
        copies.append({{to, each.key().path}, each.value()});
    for (const auto& [place, permissions] : copies)
        SetPermissions(place, permissions);
}

void AccountModel::RemoveRepository(const QString& name)
{
    auto each = m_permissions.lowerBound({name, {}});
    while (each != m_permissions.end() && each.key().repository == name)
        each = m_permissions.erase(each);
}

void AccountModel::RemovePath(const QString& repository, const QString& path)
{
    auto each = m_permissions.lowerBound({repository, path});
    while (each != m_permissions.end() && each.key().repository == repository && each.key().path.startsWith(path)) {
        const QString& found = each.key().path;
        const bool isBelow = found.size() == path.size() || found.at(path.size()) == u'/';
        each = isBelow ? m_permissions.erase(each) : std::next(each);
    }
}

QSet<QString> AccountModel::SecuredPaths(const QString& repository) const
{
    QSet<QString> paths;
    for (auto each = m_permissions.lowerBound({repository, {}});
         each != m_permissions.end() && each.key().repository == repository; ++each)
        paths.insert(each.key().path);
    return paths;
}

bool AccountModel::KnowsRepository(const QString& name) const
{
    const auto first = m_permissions.lowerBound({name, {}});
    return first != m_permissions.end() && first.key().repository == name;
}

void AccountModel::RemoveAccount(const Principal& account)
{
    for (Members& members : m_groups)
        members.removeAll(account);
    for (auto each = m_permissions.begin(); each != m_permissions.end();) {
        each->removeIf([&account](const Permission& permission) { return permission.account == account; });
        each = each->isEmpty() ? m_permissions.erase(each) : std::next(each);
    }
}

bool AccountModel::Exists(const Principal& account) const
{
    switch (account.kind) {
    case PrincipalKind::User:
        return HasUser(account.name);
    case PrincipalKind::Group:
        return HasGroup(account.name);
    case PrincipalKind::Everyone:
    case PrincipalKind::SystemAccount:
        return true;
    }
    return false;
}

} // namespace quenvolta
