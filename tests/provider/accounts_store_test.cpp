#include "accounts_store_fixture.h"
#include "foundation/registry_accessor.h"

#include <sys/stat.h>

namespace quenvolta
{

namespace
{

class AccountsStoreTest : public AccountsStoreFixture
{
};

} // namespace

TEST_F(AccountsStoreTest, FirstUseLetsNobodyInAndKeepsTheFilesPrivate)
{
    EXPECT_EQ(Content(u"htpasswd"_s), "");
    EXPECT_FALSE(Content(u"authz"_s).contains('='));
    EXPECT_TRUE(RulesParse());
    Opened server(m_path);
    server.Change([](AccountModel& model) { model.AddUser(u"ann"_s, PasswordHash::Make(u"ann"_s, u"pw"_s, 4)); });
    for (const char* name : {"accounts.json", "htpasswd", "authz"}) {
        struct stat status {
        };
        ASSERT_EQ(::stat(QFile::encodeName(m_path + u'/' + QLatin1StringView(name)).constData(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777U, 0600U) << name;
    }
}

TEST_F(AccountsStoreTest, PasswordsAreHashedWholeAndOnlyTheHashIsKept)
{
    Opened server(m_path);
    const QString password = u"geheim ö:\n€"_s;
    const QByteArray hash = server.store.HashPassword(u"ann"_s, password);
    EXPECT_TRUE(hash.startsWith("$2y$04$"));
    EXPECT_TRUE(PasswordHash::Matches(password, hash));
    EXPECT_FALSE(PasswordHash::Matches(password.toUpper(), hash));
    EXPECT_NE(hash, server.store.HashPassword(u"ann"_s, password));
    EXPECT_TRUE(PasswordHash::Matches({}, server.store.HashPassword(u"ann"_s, {})));
    EXPECT_NO_THROW(server.store.HashPassword(u"ann"_s, QString(72, u'x')));
    for (const QString& unfit :
         {QString(73, u'x'), QString(25, u'€'), u"a"_s + QChar(u'\0') + u"b"_s, QString(QChar(0xd800))})
        EXPECT_EQ(CodeOf([&] { server.store.HashPassword(u"ann"_s, unfit); }), WBEM_E_INVALID_PARAMETER);
    server.Change([&](AccountModel& model) { model.AddUser(u"ann"_s, hash); });
    for (const QString& name : QDir(m_path).entryList(QDir::Files | QDir::Hidden))
        EXPECT_FALSE(Content(name).contains("geheim")) << name.toStdString();
}

TEST_F(AccountsStoreTest, NamesAreRefusedOrReadBackTheSame)
{
    const QStringList refused{{},
                              u"a:b"_s,
                              u"a=b"_s,
                              u"a\nb"_s,
                              u"a\rb"_s,
                              u"a\tb"_s,
                              u"#a"_s,
                              u"@a"_s,
                              u"&a"_s,
                              u"$a"_s,
                              u"~a"_s,
                              u"[a]"_s,
                              u"a]"_s,
                              u" a"_s,
                              u"a "_s,
                              u"\u00a0a"_s,
                              u"*"_s,
                              u"a,b"_s,
                              u"a/b"_s,
                              QString(256, u'a'),
                              QString(100, u'€'),
                              u"a"_s + QChar(u'\0'),
                              u"a"_s + QChar(0xdc00),
                              u"a\u2028b"_s,
                              u"a\u0085b"_s};
    const QStringList kept{u"ann"_s,     u"Ann"_s, u"ö"_s,   u"o\u0308"_s,      u"Анна"_s,  u"李"_s,
                           u"a b"_s,     u"a@b"_s, u"x#y"_s, u"!a"_s,           u"\"a\""_s, u"a\\b"_s,
                           u"%(ann)s"_s, u";a"_s,  u"😀"_s,   QString(255, u'a')};
    Opened server(m_path);
    server.Change([&](AccountModel& model) {
        for (const QString& name : refused) {
            EXPECT_EQ(CodeOf([&] { model.AddUser(name, "$2y$"); }), WBEM_E_INVALID_PARAMETER) << name.toStdString();
            EXPECT_EQ(CodeOf([&] { model.AddGroup(name, {}); }), WBEM_E_INVALID_PARAMETER) << name.toStdString();
        }
        const QByteArray hash = PasswordHash::Make({}, {}, 4);
        for (const QString& name : kept) {
            model.AddUser(name, hash);
            model.AddGroup(name, {User(name)});
        }
        PermissionList all;
        for (const QString& name : kept)
            all << Permission{User(name), Access::Read} << Permission{Group(name), Access::ReadWrite};
        model.SetPermissions({u"r"_s, u"/"_s}, all);
    });
    QStringList sorted = kept;
    sorted.sort();
    const std::shared_ptr<const AccountModel> read = Opened(m_path).store.Read();
    EXPECT_EQ(read->Users(), sorted);
    EXPECT_EQ(read->Groups(), sorted);
    EXPECT_EQ(PasswordUsers(), sorted);
    EXPECT_TRUE(RulesParse());
}

TEST_F(AccountsStoreTest, CyclesAndUnknownAccountsAreRefusedBeforeAnythingIsWritten)
{
    constexpr HRESULT kCycle = MakeHResult(0x80070423);
    Opened server(m_path);
    server.Change([](AccountModel& model) {
        model.AddUser(u"ann"_s, "h");
        model.AddGroup(u"a"_s, {User(u"ann"_s)});
        model.AddGroup(u"b"_s, {Group(u"a"_s)});
        model.AddGroup(u"c"_s, {Group(u"b"_s)});
    });
    const auto before = Files();
    const auto refused = [&](HRESULT code, const AccountStore::Edit& edit) {
        EXPECT_EQ(CodeOf([&] { server.Change(edit); }), code);
        EXPECT_EQ(Files(), before);
    };
    const auto members = [](const QString& group, const AccountModel::Members& list) {
        return [=](AccountModel& model) { model.SetGroupMembers(group, list); };
    };
    refused(kCycle, members(u"a"_s, {User(u"ann"_s), Group(u"c"_s)}));
    refused(kCycle, members(u"b"_s, {Group(u"b"_s)}));
    refused(kCycle, [](AccountModel& model) { model.AddGroup(u"d"_s, {Group(u"d"_s)}); });
    refused(WBEM_E_NOT_FOUND, members(u"a"_s, {User(u"bob"_s)}));
    refused(WBEM_E_NOT_FOUND, members(u"gone"_s, {}));
    refused(WBEM_E_INVALID_PARAMETER, members(u"a"_s, {User(u"ann"_s), User(u"ann"_s)}));
    refused(WBEM_E_ALREADY_EXISTS, [](AccountModel& model) { model.AddUser(u"ann"_s, "h"); });
    refused(WBEM_E_ALREADY_EXISTS, [](AccountModel& model) { model.AddGroup(u"a"_s, {}); });
    refused(WBEM_E_NOT_FOUND, [](AccountModel& model) { model.RemoveUser(u"Ann"_s); });
    refused(WBEM_E_NOT_FOUND, [](AccountModel& model) { model.RemoveGroup(u"d"_s); });
    const auto permit = [](const SecuredPlace& place, const PermissionList& list) {
        return [=](AccountModel& model) { model.SetPermissions(place, list); };
    };
    const SecuredPlace root{u"r"_s, u"/"_s};
    refused(WBEM_E_NOT_FOUND, permit(root, {{User(u"bob"_s), Access::Read}}));
    refused(WBEM_E_NOT_FOUND, permit(root, {{Group(u"ann"_s), Access::Read}}));
    refused(WBEM_E_INVALID_PARAMETER, permit(root, {{User(u"ann"_s), static_cast<Access>(3)}}));
    refused(WBEM_E_INVALID_PARAMETER, permit(root, {{{}, Access::Read}, {{}, Access::None}}));
    for (const char* sid : {"S-1-5-21-1-2-3", "S-1-22-3-1", "S-1-22-1-1-1", "root", ""})
        refused(WBEM_E_INVALID_PARAMETER,
                permit(root, {{{PrincipalKind::SystemAccount, QLatin1StringView(sid)}, Access::Read}}));
    for (const char* path : {"", "a", "/a/", "//a", "/a/../b", "/a]b", "/a\nb"})
        refused(WBEM_E_INVALID_PARAMETER, permit({u"r"_s, QLatin1StringView(path)}, {{{}, Access::Read}}));
    for (const char* repository : {"a:b", "a]", "[a", "a/b", "a\n"})
        refused(WBEM_E_INVALID_PARAMETER, permit({QLatin1StringView(repository), u"/"_s}, {{{}, Access::Read}}));
}

TEST_F(AccountsStoreTest, WhatIsDeletedOrRenamedTakesItsPermissionsAlong)
{
    Opened server(m_path);
    server.Change([](AccountModel& model) {
        model.AddUser(u"ann"_s, "h");
        model.AddUser(u"bob"_s, "h");
        model.AddGroup(u"a"_s, {User(u"ann"_s), User(u"bob"_s)});
        model.AddGroup(u"b"_s, {Group(u"a"_s), User(u"ann"_s)});
        for (const char* path : {"/", "/x", "/x/y", "/xy", "/x y"})
            model.SetPermissions({u"r"_s, QLatin1StringView(path)}, {{User(u"bob"_s), Access::Read}});
        model.SetPermissions({u"s"_s, u"/"_s}, {{User(u"ann"_s), Access::None}, {Group(u"a"_s), Access::Read}});
        model.SetPermissions({}, {{User(u"ann"_s), Access::ReadWrite}});
    });
    server.Change([](AccountModel& model) { model.RemoveUser(u"ann"_s); });
    auto now = server.store.Read();
    EXPECT_EQ(now->GroupMembers(u"a"_s), AccountModel::Members{User(u"bob"_s)});
    EXPECT_FALSE(now->HasPermissions({}));
    EXPECT_FALSE(Content(u"authz"_s).contains("ann"));
    server.Change([](AccountModel& model) { model.RemoveGroup(u"a"_s); });
    now = server.store.Read();
    EXPECT_TRUE(now->GroupMembers(u"b"_s).isEmpty());
    EXPECT_FALSE(now->HasPermissions({u"s"_s, u"/"_s}));

    server.store.ForgetPaths(u"r"_s, {u"/x"_s}, {});
    now = server.store.Read();
    EXPECT_EQ(now->AllPermissions().keys(),
              (QList<SecuredPlace>{{u"r"_s, u"/"_s}, {u"r"_s, u"/x y"_s}, {u"r"_s, u"/xy"_s}}));
    const DataLock lock(m_path, {});
    server.store.CopyRepository(lock, u"r"_s, u"t"_s);
    EXPECT_TRUE(Content(u"authz"_s).contains("[r:/xy]") && Content(u"authz"_s).contains("[t:/xy]"));
    server.store.ForgetRepository(lock, u"r"_s);
    EXPECT_FALSE(server.store.Read()->KnowsRepository(u"r"_s));
    EXPECT_FALSE(Content(u"authz"_s).contains("[r:"));
    server.store.ForgetRepository(lock, u"t"_s);
    EXPECT_TRUE(server.store.Read()->AllPermissions().isEmpty());
}

// Two processes make thousands of changes, each of which needs all that it changed before, while a third one reads.
TEST_F(AccountsStoreTest, WhatWasMadeFromTheAccountsIsMadeAnewWhenItIsOld)
{
    Opened server(m_path);
    server.Change([](AccountModel& model) {
        model.AddUser(u"ann"_s, QByteArray(60, 'h'));
        model.SetPermissions({u"r"_s, u"/"_s}, {{User(u"ann"_s), Access::Read},
                                                {{PrincipalKind::SystemAccount, u"S-1-22-1-0"_s}, Access::ReadWrite}});
    });
    const auto whole = Files();
    EXPECT_TRUE(whole[2].contains("ann = r\n") && !whole[2].contains("root"));
    QFile::remove(m_path + "/authz"_L1);
    QFile::remove(m_path + "/htpasswd"_L1);
    server.Repair();
    EXPECT_EQ(Files(), whole);
    RegistryAccessor(server.data.Settings(), RegistryAccessor::kServerKey.toString()).SetUseWindowsAuth(true);
    server.store.RenewRules();
    EXPECT_TRUE(Content(u"authz"_s).contains("root = rw\n") && !Content(u"authz"_s).contains("ann"));
}

} // namespace quenvolta
