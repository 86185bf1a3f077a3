#include "provider/accounts/access_rules.h"

#include "provider/svn/repository_names.h"

#include <QSet>

#include <algorithm>
#include <optional>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// Holds a character that no group of the server's own can have in its name.
QString SystemGroupName(std::uint32_t gid)
{
    return "system/"_L1 + QString::number(gid);
}

// An entry of the model for those who sign in; nothing when that can't be anybody.
std::optional<AccessRules::Entry> ResolveEntry(const Permission& permission, SignIn signIn,
                                               const SystemAccounts& accounts, QSet<std::uint32_t>& gids)
{
    const Principal& account = permission.account;
    if (account.kind == PrincipalKind::Everyone)
        return AccessRules::Entry{account.kind, {}, permission.access};
    if ((account.kind == PrincipalKind::SystemAccount) != (signIn == SignIn::SystemAccounts))
        return std::nullopt;
    if (account.kind != PrincipalKind::SystemAccount)
        return AccessRules::Entry{account.kind, account.name, permission.access};
    const std::optional<SystemAccountId> id = SystemAccountId::Parse(account.name);
    if (!id)
        return std::nullopt;
    if (id->isGroup) {
        gids.insert(id->number);
        return AccessRules::Entry{PrincipalKind::Group, SystemGroupName(id->number), permission.access};
    }
    const std::optional<QString> name = accounts.UserName(id->number);
    return name ? std::optional(AccessRules::Entry{PrincipalKind::User, *name, permission.access}) : std::nullopt;
}

QMap<QString, QStringList> GroupsOf(const SystemAccounts& accounts, const QSet<std::uint32_t>& gids)
{
    QMap<QString, QStringList> groups;
    const QHash<std::uint32_t, QStringList> members = accounts.GroupMembers(gids.values());
    for (auto group = members.cbegin(); group != members.cend(); ++group) {
        QStringList names = *group;
        names.sort();
        groups.insert(SystemGroupName(group.key()), names);
    }
    return groups;
}

} // namespace

AccessRules AccessRules::Resolve(const AccountModel& model, SignIn signIn, const SystemAccounts& accounts)
{
    AccessRules rules;
    QSet<std::uint32_t> gids;
    const QMap<SecuredPlace, PermissionList>& all = model.AllPermissions();
    for (auto place = all.cbegin(); place != all.cend(); ++place) {
        QList<Entry>& entries = rules.places[place.key()];
        for (const Permission& permission : *place) {
            if (const std::optional<Entry> entry = ResolveEntry(permission, signIn, accounts, gids))
                entries.append(*entry);
        }
    }
    rules.groups = signIn == SignIn::ServerUsers ? model.UsersOfGroups() : GroupsOf(accounts, gids);
    rules.DropNobody();
    return rules;
}

// Takes out the groups that no entry names, the entries of groups without users, and places without entries.
void AccessRules::DropNobody()
{
    QSet<QString> named;
    for (auto place = places.begin(); place != places.end();) {
        place->removeIf([this](const Entry& entry) {
            return entry.kind == PrincipalKind::Group && groups.value(entry.name).isEmpty();
        });
        for (const Entry& entry : std::as_const(*place)) {
            if (entry.kind == PrincipalKind::Group)
                named.insert(entry.name);
        }
        place = place->isEmpty() ? places.erase(place) : std::next(place);
    }
    for (auto group = groups.begin(); group != groups.end();)
        group = named.contains(group.key()) ? std::next(group) : groups.erase(group);
}

Access AccessRules::Evaluate(const QString& user, const QString& repository, const QString& path) const
{
    QList<SecuredPlace> chain;
    for (QString at = path; !at.isEmpty(); at = RepositoryNames::ParentOf(at))
        chain.append({repository, at});
    chain.append(SecuredPlace{});

    // The nearest entry of each account that is the user's, found from the path upwards.
    std::optional<Access> own;
    std::optional<Access> everyone;
    QMap<QString, Access> ofGroups;
    for (const SecuredPlace& place : std::as_const(chain)) {
        for (const Entry& entry : places.value(place)) {
            if (entry.kind == PrincipalKind::Everyone)
                everyone = everyone.value_or(entry.access);
            else if (entry.kind == PrincipalKind::User && entry.name == user)
                own = own.value_or(entry.access);
            else if (entry.kind == PrincipalKind::Group && !ofGroups.contains(entry.name) &&
                     groups.value(entry.name).contains(user))
                ofGroups.insert(entry.name, entry.access);
        }
    }
    if (own)
        return *own;
    if (ofGroups.isEmpty())
        return everyone.value_or(Access::None);
    const auto [lowest, highest] = std::minmax_element(ofGroups.cbegin(), ofGroups.cend());
    return *lowest == Access::None ? Access::None : *highest;
}

} // namespace quenvolta
