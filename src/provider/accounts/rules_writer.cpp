#include "provider/accounts/rules_writer.h"

#include "provider/accounts/account_names.h"

#include <QCryptographicHash>
#include <QHash>

#include <algorithm>
#include <optional>
#include <vector>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int kUnset = -1;
constexpr std::size_t kLongestRow = 3; // users that are named one by one; more become a group
constexpr const char* kAccessWords[] = {"", "r", "rw"};

// Sorts what is below a path right behind it.
struct WalkOrder {
    SecuredPlace place;
    QString key;

    explicit WalkOrder(const SecuredPlace& which)
        : place(which)
        , key(which.path == "/"_L1 ? QString() : QString(which.path).replace(u'/', QChar(u'\0')))
    {
    }
    bool operator<(const WalkOrder& other) const
    {
        return std::tie(place.repository, key) < std::tie(other.place.repository, other.key);
    }
};

bool IsAbove(const SecuredPlace& upper, const SecuredPlace& lower)
{
    if (upper.IsServer())
        return true;
    return upper.repository == lower.repository && (upper.path == "/"_L1 || lower.path.startsWith(upper.path + u'/'));
}

// A name that no account has, made of what it stands for, so that it stays the same while that does.
QByteArray MadeName(const char* kind, const QByteArray& content)
{
    constexpr qsizetype kDigits = 16;
    return kind + QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex().first(kDigits);
}

/// Goes through the places from the top down, and knows at each what every account has there.
class Writer
{
public:
    explicit Writer(const AccessRules& rules);
    RulesFile Write();

private:
    struct Account {
        QString name;
        bool isGroup = false;
        std::vector<std::size_t> members = {}; ///< a group's users
        std::vector<std::size_t> groups = {};  ///< a user's groups
        int access = kUnset;                   ///< nearest entry from the current place upwards
        int place = kUnset;                    ///< the last place that has an entry for it, as a number
        bool isNamed = false;                  ///< its own line at the current place gives all its users what it says
    };
    struct Frame {
        SecuredPlace place;
        std::vector<std::pair<std::size_t, int>> before; ///< what the accounts with entries here had above
    };

    std::size_t IndexOf(bool isGroup, const QString& name);
    void Enter(const SecuredPlace& place, const QList<AccessRules::Entry>& entries);
    void Leave();
    void WritePlace(const SecuredPlace& place, const QList<AccessRules::Entry>& entries);
    int AccessOf(const Account& user) const;
    int NameGroup(Account& group);
    void CollectUnlike(const Account& group, QMap<int, std::vector<std::size_t>>& rows);
    bool ReachesAll(int everyone, int lowest) const;
    void AddLine(const QByteArray& account, int access);
    QByteArray UserToken(const QString& name);
    QByteArray GroupToken(std::size_t group);
    QByteArray SetToken(std::vector<std::size_t> accounts);

    const AccessRules& m_rules;
    std::vector<Account> m_accounts;
    QHash<std::pair<bool, QString>, std::size_t> m_indices;
    std::vector<Frame> m_frames;
    int m_place = 0;
    RulesFile m_file;
    RulesFile::Section m_section;
};

Writer::Writer(const AccessRules& rules)
    : m_rules(rules)
{
    for (auto group = rules.groups.cbegin(); group != rules.groups.cend(); ++group) {
        const std::size_t index = IndexOf(true, group.key());
        for (const QString& name : *group) {
            const std::size_t user = IndexOf(false, name);
            m_accounts[index].members.push_back(user);
            m_accounts[user].groups.push_back(index);
        }
    }
}

std::size_t Writer::IndexOf(bool isGroup, const QString& name)
{
    const auto found = m_indices.constFind({isGroup, name});
    if (found != m_indices.cend())
        return *found;
    m_accounts.push_back({name, isGroup});
    return *m_indices.insert({isGroup, name}, m_accounts.size() - 1);
}

RulesFile Writer::Write()
{
    std::vector<WalkOrder> places;
    for (auto place = m_rules.places.keyBegin(); place != m_rules.places.keyEnd(); ++place)
        places.emplace_back(*place);
    std::sort(places.begin(), places.end());
    for (const WalkOrder& each : places) {
        const QList<AccessRules::Entry> entries = m_rules.places.value(each.place);
        while (!m_frames.empty() && !IsAbove(m_frames.back().place, each.place))
            Leave();
        ++m_place;
        Enter(each.place, entries);
        WritePlace(each.place, entries);
    }
    return std::move(m_file);
}

void Writer::Enter(const SecuredPlace& place, const QList<AccessRules::Entry>& entries)
{
    Frame frame{place, {}};
    for (const AccessRules::Entry& entry : entries) {
        if (entry.kind == PrincipalKind::Everyone)
            continue;
        const std::size_t index = IndexOf(entry.kind == PrincipalKind::Group, entry.name);
        Account& account = m_accounts[index];
        frame.before.emplace_back(index, account.access);
        account.access = static_cast<int>(entry.access);
        account.place = m_place;
        account.isNamed = false;
    }
    m_frames.push_back(std::move(frame));
}

void Writer::Leave()
{
    for (const auto& [account, access] : m_frames.back().before)
        m_accounts[account].access = access;
    m_frames.pop_back();
}

int Writer::AccessOf(const Account& user) const
{
    if (user.access != kUnset)
        return user.access;
    int highest = kUnset;
    for (const std::size_t group : user.groups) {
        const int access = m_accounts[group].access;
        if (access == static_cast<int>(Access::None))
            return access;
        highest = std::max(highest, access);
    }
    return highest;
}

void Writer::WritePlace(const SecuredPlace& place, const QList<AccessRules::Entry>& entries)
{
    const QString title = place.IsServer() ? u"[/]\n"_s : u'[' + place.repository + u':' + place.path + "]\n"_L1;
    m_section = {title.toUtf8(), {}};

    // The least that anybody has whom a line here names.
    int lowest = static_cast<int>(Access::ReadWrite);
    std::optional<int> everyone;
    for (const AccessRules::Entry& entry : entries) {
        const int access = static_cast<int>(entry.access);
        if (entry.kind == PrincipalKind::Everyone) {
            everyone = access;
        } else if (entry.kind == PrincipalKind::User) {
            lowest = std::min(lowest, access);
            AddLine(UserToken(entry.name), access);
        } else {
            lowest = std::min(lowest, NameGroup(m_accounts[IndexOf(true, entry.name)]));
        }
    }
    // All lines that fit are united by the library: whoever gets something else than their groups' lines say comes
    // apart.
    QMap<int, std::vector<std::size_t>> rows;
    for (const auto& [account, before] : m_frames.back().before) {
        if (m_accounts[account].isGroup)
            CollectUnlike(m_accounts[account], rows);
    }
    for (auto row = rows.begin(); row != rows.end(); ++row) {
        std::sort(row->begin(), row->end());
        row->erase(std::unique(row->begin(), row->end()), row->end());
        if (row->size() > kLongestRow) {
            AddLine('@' + SetToken(*row), row.key());
            continue;
        }
        for (const std::size_t user : *row)
            AddLine(UserToken(m_accounts[user].name), row.key());
    }
    if (everyone && ReachesAll(*everyone, lowest)) {
        AddLine("*", *everyone);
    } else if (everyone) {
        // Those with entries here or above are left to them.
        std::vector<std::size_t> others;
        for (const Frame& frame : m_frames) {
            for (const auto& [account, before] : frame.before)
                others.push_back(account);
        }
        AddLine("~@" + SetToken(std::move(others)), *everyone);
    }
    m_file.sections.append(m_section);
}

// Names the group when all its users have at least as much as it; returns the least that one of them has.
int Writer::NameGroup(Account& group)
{
    int lowest = static_cast<int>(Access::ReadWrite);
    for (const std::size_t user : group.members)
        lowest = std::min(lowest, AccessOf(m_accounts[user]));
    group.isNamed = lowest >= group.access;
    if (group.isNamed)
        AddLine('@' + GroupToken(m_indices.value({true, group.name})), group.access);
    return lowest;
}

void Writer::CollectUnlike(const Account& group, QMap<int, std::vector<std::size_t>>& rows)
{
    for (const std::size_t index : group.members) {
        const Account& user = m_accounts[index];
        if (user.place == m_place)
            continue; // has a line of its own
        const int access = AccessOf(user);
        const bool isCovered = std::any_of(user.groups.begin(), user.groups.end(), [&](std::size_t each) {
            const Account& other = m_accounts[each];
            return other.place == m_place && other.isNamed && other.access == access;
        });
        if (!isCovered)
            rows[access].push_back(index);
    }
}

// True when "*" gives nobody more than they have, and takes nothing from those with entries above.
bool Writer::ReachesAll(int everyone, int lowest) const
{
    const bool allAreHere = std::all_of(m_frames.begin(), m_frames.end(), [this](const Frame& frame) {
        return std::all_of(frame.before.begin(), frame.before.end(),
                           [this](const auto& each) { return m_accounts[each.first].place == m_place; });
    });
    return allAreHere && everyone <= lowest;
}

void Writer::AddLine(const QByteArray& account, int access)
{
    m_section.text += account + " = " + kAccessWords[access] + '\n';
}

QByteArray Writer::UserToken(const QString& name)
{
    QByteArray encoded = name.toUtf8();
    if (AccountNames::IsPlain(name))
        return encoded;
    const QByteArray alias = MadeName("name/", encoded);
    m_file.aliases.insert(alias, alias + " = " + encoded + '\n');
    return '&' + alias;
}

QByteArray Writer::GroupToken(std::size_t group)
{
    const Account& account = m_accounts[group];
    QByteArray name = account.name.toUtf8();
    m_section.groups.append(name);
    if (!m_file.groups.contains(name)) {
        QByteArrayList members;
        for (const std::size_t user : account.members)
            members.append(UserToken(m_accounts[user].name));
        m_file.groups.insert(name, name + " = " + members.join(", ") + '\n');
    }
    return name;
}

QByteArray Writer::SetToken(std::vector<std::size_t> accounts)
{
    std::sort(accounts.begin(), accounts.end());
    accounts.erase(std::unique(accounts.begin(), accounts.end()), accounts.end());
    QByteArrayList members;
    for (const std::size_t account : accounts)
        members.append(m_accounts[account].isGroup ? '@' + GroupToken(account) : UserToken(m_accounts[account].name));
    std::sort(members.begin(), members.end());
    const QByteArray content = members.join(", ");
    QByteArray name = MadeName("set/", content);
    m_section.groups.append(name);
    m_file.groups.insert(name, name + " = " + content + '\n');
    return name;
}

} // namespace

RulesFile WriteRules(const AccessRules& rules)
{
    return Writer(rules).Write();
}

} // namespace quenvolta
