#include "permission_model.h"
#include "provider/accounts/access_rules.h"
#include "provider/accounts/rules_writer.h"
#include "provider/provider_error.h"
#include "provider/svn/svn_failure.h"
#include "provider/svn/svn_pool.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>
#include <svn_repos.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// What Subversion's library makes of rules.
class LibraryRules
{
public:
    explicit LibraryRules(const QByteArray& text)
    {
        const svn_string_t string{text.constData(), static_cast<apr_size_t>(text.size())};
        CheckSvn(svn_repos_authz_parse2(&m_authz, svn_stream_from_string(&string, m_pool.Get()), nullptr, nullptr,
                                        nullptr, m_pool.Get(), m_pool.Get()),
                 u"parse");
    }

    int LevelOf(const QString& user, const QString& repository, const QString& path)
    {
        return Allows(user, repository, path, svn_authz_write) ? 2 : Allows(user, repository, path, svn_authz_read);
    }

private:
    int Allows(const QString& user, const QString& repository, const QString& path, svn_repos_authz_access_t access)
    {
        svn_boolean_t granted = FALSE;
        CheckSvn(svn_repos_authz_check_access(m_authz, repository.toUtf8().constData(), path.toUtf8().constData(),
                                              user.toUtf8().constData(), access, &granted, m_pool.Get()),
                 u"check");
        return granted;
    }

    SvnPool m_pool;
    svn_authz_t* m_authz = nullptr;
};

class NoSystemAccounts final : public SystemAccounts
{
public:
    std::optional<QString> UserName(std::uint32_t uid) const override
    {
        return uid == 1000 ? std::optional(u"#odd, name"_s) : uid == 1001 ? std::optional(u"ann"_s) : std::nullopt;
    }
    QHash<std::uint32_t, QStringList> GroupMembers(const QList<std::uint32_t>&) const override
    {
        return {{100, {u"ann"_s, u"CORP\\bob"_s, u"#odd, name"_s}}};
    }
};

int Evaluate(const AccessRules& rules, const QString& user, const QString& repository, const QString& path)
{
    return static_cast<int>(rules.Evaluate(user, repository, path));
}

} // namespace

TEST(AccountsRulesTest, TheProviderAndSubversionReadEveryCaseAlike)
{
    const AccessRules rules =
        AccessRules::Resolve(permissioncases::Model("hash"), SignIn::ServerUsers, NoSystemAccounts());
    const RulesFile file = WriteRules(rules);
    file.Check({});
    LibraryRules library(file.Text());
    EXPECT_GE(permissioncases::Cases().size(), 40);
    for (const permissioncases::Case& each : permissioncases::Cases()) {
        const std::string what = (each.user + u" in "_s + each.repository + u':' + each.path).toStdString();
        EXPECT_EQ(Evaluate(rules, each.user, each.repository, each.path), each.level) << what;
        EXPECT_EQ(library.LevelOf(each.user, each.repository, each.path), each.level) << what;
    }
}

TEST(AccountsRulesTest, RandomPermissionsAreReadAlike)
{
    const QStringList paths{u"/"_s, u"/a"_s, u"/a/b"_s, u"/a/b/c"_s, u"/ab"_s, u"/a!"_s};
    const quint32 seed = QRandomGenerator::global()->generate();
    QRandomGenerator random(seed);
    const auto pick = [&random](int below) { return static_cast<int>(random.bounded(below)); };
    for (int round = 0; round < 300; ++round) {
        AccountModel model;
        QStringList users;
        for (int i = 0; i < 8; ++i)
            model.AddUser(users.emplaceBack(u"u%1"_s.arg(i)), "hash");
        QStringList groups;
        for (int i = 0; i < 5; ++i) {
            AccountModel::Members members;
            for (const QString& user : users) {
                if (pick(3) == 0)
                    members.append({PrincipalKind::User, user});
            }
            if (i > 0 && pick(2) == 0)
                members.append({PrincipalKind::Group, groups[pick(i)]});
            model.AddGroup(groups.emplaceBack(u"g%1"_s.arg(i)), members);
        }
        const auto fill = [&](const SecuredPlace& place) {
            PermissionList list;
            if (pick(2) == 0)
                list.append({{}, static_cast<Access>(pick(3))});
            for (const QString& user : users) {
                if (pick(7) == 0)
                    list.append({{PrincipalKind::User, user}, static_cast<Access>(pick(3))});
            }
            for (const QString& group : groups) {
                if (pick(4) == 0)
                    list.append({{PrincipalKind::Group, group}, static_cast<Access>(pick(3))});
            }
            model.SetPermissions(place, list);
        };
        fill({});
        for (const QString& path : paths) {
            fill({u"r"_s, path});
            fill({u"s"_s, path});
        }
        const AccessRules rules = AccessRules::Resolve(model, SignIn::ServerUsers, NoSystemAccounts());
        const QByteArray text = WriteRules(rules).Text();
        LibraryRules library(text);
        for (const QString& user : users + QStringList{u"stranger"_s}) {
            for (const QString& path : paths + QStringList{u"/a/b/x/y"_s, u"/z"_s})
                ASSERT_EQ(library.LevelOf(user, u"r"_s, path), Evaluate(rules, user, u"r"_s, path))
                    << "seed " << seed << " round " << round << ": " << user.toStdString() << " at "
                    << path.toStdString() << "\n"
                    << text.toStdString();
        }
    }
}

TEST(AccountsRulesTest, TheSystemsAccountsStandByTheNamesThatTheySignInWith)
{
    AccountModel model;
    model.AddUser(u"ann"_s, "hash");
    model.SetPermissions({}, {{{PrincipalKind::User, u"ann"_s}, Access::ReadWrite},
                              {{PrincipalKind::SystemAccount, u"S-1-22-1-1000"_s}, Access::ReadWrite},
                              {{PrincipalKind::SystemAccount, u"S-1-22-1-77"_s}, Access::ReadWrite},
                              {{PrincipalKind::SystemAccount, u"S-1-22-2-100"_s}, Access::Read},
                              {{PrincipalKind::SystemAccount, u"S-1-22-2-999"_s}, Access::ReadWrite}});
    const AccessRules rules = AccessRules::Resolve(model, SignIn::SystemAccounts, NoSystemAccounts());
    LibraryRules library(WriteRules(rules).Text());
    EXPECT_EQ(library.LevelOf(u"#odd, name"_s, u"r"_s, u"/"_s), 2);
    EXPECT_EQ(library.LevelOf(u"CORP\\bob"_s, u"r"_s, u"/"_s), 1);
    EXPECT_EQ(library.LevelOf(u"ann"_s, u"r"_s, u"/"_s), 1); // not the server's user of that name
    LibraryRules own(WriteRules(AccessRules::Resolve(model, SignIn::ServerUsers, NoSystemAccounts())).Text());
    EXPECT_EQ(own.LevelOf(u"ann"_s, u"r"_s, u"/"_s), 2);
    EXPECT_EQ(own.LevelOf(u"CORP\\bob"_s, u"r"_s, u"/"_s), 0);
}

TEST(AccountsRulesTest, OnlyWhatIsNewIsHandedToTheLibraryAndRefusedByIt)
{
    RulesFile file;
    file.groups.insert("g", "g = ann\n");
    file.sections = {{"[/]\n@g = rw\n", {"g"}}, {"[r:/a/]\n* = r\n", {}}};
    EXPECT_THROW(file.Check({}), ProviderError);
    EXPECT_NO_THROW(file.Check(file.Text())); // as it stands already
    const QByteArray before = file.Text();
    file.sections.removeLast();
    file.groups.insert("g", "g = @gone\n");
    EXPECT_THROW(file.Check(before), ProviderError); // the section is the same, its group isn't
}

TEST(AccountsRulesTest, DeeplyNestedGroupsCostNothing)
{
    AccountModel model;
    model.AddUser(u"ann"_s, "hash");
    QStringList names{u"a"_s, u"b"_s};
    for (const QString& name : names)
        model.AddGroup(name, {{PrincipalKind::User, u"ann"_s}});
    // Every group holds both of the level below: 2^200 ways from the top to the user.
    for (int level = 0; level < 200; ++level) {
        const AccountModel::Members members{{PrincipalKind::Group, names[0]}, {PrincipalKind::Group, names[1]}};
        names = {u"a%1"_s.arg(level), u"b%1"_s.arg(level)};
        for (const QString& name : names)
            model.AddGroup(name, members);
    }
    model.SetPermissions({}, {{{PrincipalKind::Group, names[0]}, Access::Read}});
    LibraryRules library(WriteRules(AccessRules::Resolve(model, SignIn::ServerUsers, NoSystemAccounts())).Text());
    EXPECT_EQ(library.LevelOf(u"ann"_s, u"r"_s, u"/"_s), 1);
}

} // namespace quenvolta
