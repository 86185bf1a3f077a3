#include "provider/standard/directory_class.h"
#include "server_fixture.h"

#include <QSysInfo>

#include <ctime>

namespace quenvolta
{

namespace
{

/// A directory of many accounts that lists only some of them.
class ListedAccounts final : public AccountDatabase
{
public:
    explicit ListedAccounts(QList<DatabaseAccount> listed, QList<DatabaseAccount> unlisted = {})
        : m_listed(std::move(listed))
        , m_unlisted(std::move(unlisted))
    {
    }

    void Visit(const Visitor& visitor) const override
    {
        for (const DatabaseAccount& each : m_listed)
            visitor(each);
    }
    std::optional<DatabaseAccount> Find(const QString& name) const override
    {
        return First([&name](const DatabaseAccount& each) { return each.name == name; });
    }
    std::optional<DatabaseAccount> FindNumber(std::uint32_t number) const override
    {
        return First(
            [end = u'-' + QString::number(number)](const DatabaseAccount& each) { return each.sid.endsWith(end); });
    }

private:
    template <typename Predicate>
    std::optional<DatabaseAccount> First(const Predicate& wanted) const
    {
        const QList<DatabaseAccount> all = m_listed + m_unlisted;
        const auto found = std::find_if(all.cbegin(), all.cend(), wanted);
        return found == all.cend() ? std::nullopt : std::optional(*found);
    }

    QList<DatabaseAccount> m_listed;
    QList<DatabaseAccount> m_unlisted;
};

class DirectoryTest : public ServerFixture
{
protected:
    void Use(const QList<DatabaseAccount>& users, const QList<DatabaseAccount>& unlisted = {})
    {
        m_server = std::make_unique<ManagementNamespace>(u"CIMV2"_s, ServedVersion(u"3.3.1"_s).Table());
        m_server->Add(u"Quenvolta_Directory"_s,
                      std::make_shared<DirectoryClass>(std::make_unique<ListedAccounts>(users, unlisted),
                                                       std::make_unique<ListedAccounts>(QList<DatabaseAccount>{
                                                           {u"anglers"_s, u"S-1-22-2-7"_s, {}}})));
    }
    /// "kind:name" of what is found, and "..." when there is more.
    QStringList Search(const QString& text, const QStringList& kinds, int limit = 100)
    {
        const WbemObjectPtr out = Exec(u"Quenvolta_Directory"_s, u"Search"_s,
                                       {{u"Text"_s, text}, {u"Kinds"_s, kinds}, {u"MaxObjects"_s, limit}});
        QStringList found;
        for (const WbemObjectPtr& each : m_rows.elements.value(u"Objects"_s))
            found.append(Text(each, u"Kind"_s) + u':' + Text(each, u"Name"_s));
        if (Value(out, u"Complete"_s) == Variant(false))
            found.append(u"..."_s);
        return found;
    }

    static inline const QStringList kAll{u"user"_s, u"group"_s, u"computer"_s};
};

TEST_F(DirectoryTest, TheBestMatchesComeFirst)
{
    Use({{u"Joanna"_s, u"S-1-22-1-1"_s, {}},
         {u"zoe"_s, u"S-1-22-1-2"_s, u"Zoe Angel"_s},
         {u"andy"_s, u"S-1-22-1-3"_s, {}},
         {u"AN"_s, u"S-1-22-1-4"_s, {}},
         {u"bob"_s, u"S-1-22-1-5"_s, u"Anton B"_s},
         {u"AND$"_s, u"S-1-22-1-6"_s, {}}},
        {{u"an"_s, u"S-1-22-1-9"_s, {}}, {u"andrea"_s, u"S-1-22-1-10"_s, {}}});
    EXPECT_EQ(Search(u" an "_s, {u"user"_s}), (QStringList{u"user:an"_s, u"user:AN"_s, u"user:andy"_s, u"user:bob"_s,
                                                           u"user:Joanna"_s, u"user:zoe"_s}));
    EXPECT_EQ(Search(u"and"_s, kAll), (QStringList{u"computer:AND$"_s, u"user:andy"_s}));
    EXPECT_EQ(Search(u"andrea"_s, kAll), QStringList{u"user:andrea"_s}); // known though not listed
    EXPECT_EQ(Search(u"ANG"_s, kAll), (QStringList{u"group:anglers"_s, u"user:zoe"_s}));
    EXPECT_EQ(Search(u"an"_s, kAll, 2), (QStringList{u"user:an"_s, u"user:AN"_s, u"..."_s}));
    const QString host = QSysInfo::machineHostName();
    EXPECT_EQ(Search(host.toUpper() + u"\\andy"_s, kAll), QStringList{u"user:andy"_s});
    EXPECT_EQ(Search(u"elsewhere\\andy"_s, kAll), QStringList());
    EXPECT_EQ(Search(u"x\\"_s, kAll), QStringList());
    EXPECT_TRUE(Search(host.left(2), {u"host"_s}).contains(u"host:"_s + host));
}

TEST_F(DirectoryTest, HundredThousandAccountsAreSearchedQuicklyAndNeverListed)
{
    constexpr int kMany = 100'000;
    QList<DatabaseAccount> users;
    for (int i = 0; i < kMany; ++i)
        users.append({u"user%1"_s.arg(i), u"S-1-22-1-%1"_s.arg(i), u"Full Name %1"_s.arg(i)});
    Use(users);
    const std::clock_t begin = std::clock();
    EXPECT_EQ(Search(u"e"_s, kAll, 500).size(), 501);
    EXPECT_EQ(Search(u"user99999"_s, kAll), QStringList{u"user:user99999"_s});
    EXPECT_LT(std::clock() - begin, 2 * CLOCKS_PER_SEC);
    for (const int limit : {0, -1, 501})
        EXPECT_THROW(Search(u"e"_s, kAll, limit), ProviderError);
    for (const QString& text : {u""_s, u"  "_s, QString(257, u'x')})
        EXPECT_THROW(Search(text, kAll), ProviderError);
    EXPECT_THROW(Search(u"e"_s, {u"printer"_s}), ProviderError);
}

TEST_F(DirectoryTest, IdentifiersAreLookedUpTogether)
{
    Use({{u"ann"_s, u"S-1-22-1-1"_s, u"Ann A"_s}, {u"PC1$"_s, u"S-1-22-1-7"_s, {}}});
    Exec(u"Quenvolta_Directory"_s, u"Resolve"_s,
         {{u"SIDs"_s, QStringList{u"S-1-22-2-7"_s, u"S-1-22-1-1"_s, u"S-1-22-1-7"_s, u"S-1-22-1-2"_s, u"S-1-5-21-1"_s,
                                  u"S-1-22-3-1"_s, u"nonsense"_s, u""_s}}});
    QStringList found;
    for (const WbemObjectPtr& each : m_rows.elements.value(u"Objects"_s))
        found.append(Text(each, u"SID"_s) + u' ' + Text(each, u"Domain"_s) + u'\\' + Text(each, u"Name"_s));
    const QString domain = QSysInfo::machineHostName() + u'\\';
    EXPECT_EQ(found, (QStringList{u"S-1-22-2-7 "_s + domain + u"anglers"_s, u"S-1-22-1-1 "_s + domain + u"ann"_s,
                                  u"S-1-22-1-7 "_s + domain + u"PC1$"_s}));
    EXPECT_THROW(Exec(u"Quenvolta_Directory"_s, u"Resolve"_s, {{u"SIDs"_s, QStringList(1001, u"S-1-22-1-1"_s)}}),
                 ProviderError);
}

TEST_F(DirectoryTest, TheSystemsOwnAccountsAreFound)
{
    m_server = MakeStandardNamespace(ServedVersion(u"2.0"_s));
    EXPECT_TRUE(Search(u"root"_s, kAll).contains(u"user:root"_s));
    EXPECT_TRUE(Search(u"root"_s, kAll).contains(u"group:root"_s));
    EXPECT_THROW(Search(QString(300, u'r'), kAll), ProviderError);
}

} // namespace

} // namespace quenvolta
