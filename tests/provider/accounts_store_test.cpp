#include "foundation/registry_accessor.h"
#include "kill_count.h"
#include "memory_folder.h"
#include "provider/accounts/account_document.h"
#include "provider/accounts/account_store.h"
#include "provider/provider_error.h"
#include "provider/svn/svn_failure.h"
#include "provider/svn/svn_pool.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <csignal>
#include <gtest/gtest.h>
#include <svn_repos.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr uid_t kNobody = 65534;

class AccountsStoreTest : public ::testing::Test
{
protected:
    AccountsStoreTest() { Open(m_path).Repair(); }

    // A store as a process of its own has it.
    struct Opened {
        explicit Opened(const QString& path)
            : data(path)
            , store(data, {PasswordHash::kLowestCost, std::make_shared<TrueSystemAccounts>()})
        {
        }
        DataFolder data;
        AccountStore store;
        void Repair() { store.Repair(); }
        void Change(const AccountStore::Edit& edit) { store.Change(CancelCheck(), edit); }
    };
    static Opened Open(const QString& path) { return Opened(path); }

    QByteArray Content(const QString& name) const
    {
        QFile file(m_path + u'/' + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }

    QList<QByteArray> Files() const
    {
        return {Content(u"accounts.json"_s), Content(u"htpasswd"_s), Content(u"authz"_s)};
    }

    QStringList TemporaryFiles() const { return QDir(m_path).entryList({u".*.new"_s}, QDir::Files | QDir::Hidden); }

    // The users of the password file; each line must be whole.
    QStringList PasswordUsers() const
    {
        QStringList users;
        for (const QByteArray& line : Content(u"htpasswd"_s).split('\n')) {
            if (line.isEmpty())
                continue;
            EXPECT_EQ(line.size() - line.indexOf(':'), 61) << line.constData(); // a colon and the hash
            users.append(QString::fromUtf8(line.first(line.indexOf(':'))));
        }
        return users;
    }

    bool RulesParse() const
    {
        SvnPool pool;
        svn_authz_t* authz = nullptr;
        svn_error_t* error = svn_repos_authz_read4(&authz, QFile::encodeName(m_path + "/authz"_L1).constData(), nullptr,
                                                   TRUE, nullptr, nullptr, nullptr, pool.Get(), pool.Get());
        svn_error_clear(error);
        return error == nullptr;
    }

    static HRESULT CodeOf(const std::function<void()>& operation)
    {
        try {
            operation();
        } catch (const ProviderError& error) {
            EXPECT_FALSE(error.Description().isEmpty());
            return error.Code();
        }
        return S_OK;
    }

    QTemporaryDir m_folder{MemoryFolder()};
    QString m_path = m_folder.filePath(u"data"_s);
};

Principal User(const QString& name)
{
    return {PrincipalKind::User, name};
}
Principal Group(const QString& name)
{
    return {PrincipalKind::Group, name};
}

// The i-th change of a process that will be killed: one user comes with a group and a permission, an old one goes.
void ChangeStep(AccountModel& model, int i, const QByteArray& hash)
{
    const QString name = u"u%1"_s.arg(i);
    model.AddUser(name, hash);
    if (!model.HasGroup(u"all"_s))
        model.AddGroup(u"all"_s, {});
    model.SetGroupMembers(u"all"_s, model.GroupMembers(u"all"_s) << User(name));
    model.SetPermissions({u"r"_s, u"/%1"_s.arg(i)}, {{User(name), Access::Read}, {Group(u"all"_s), Access::None}});
    if (i >= 3) {
        model.RemoveUser(u"u%1"_s.arg(i - 3));
        model.SetPermissions({u"r"_s, u"/%1"_s.arg(i - 3)}, {});
    }
}

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
TEST_F(AccountsStoreTest, ProcessesThatChangeAtOnceLoseNothing)
{
    constexpr int kProcesses = 2;
    constexpr int kChanges = 1200;
    constexpr int kKept = 5;
    Opened(m_path).Change([](AccountModel& model) { model.AddGroup(u"all"_s, {}); });
    const auto nameOf = [](int process, int change) { return u"u%1-%2"_s.arg(process).arg(change); };
    QList<pid_t> children;
    for (int process = 0; process < kProcesses; ++process) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            try {
                Opened own(m_path);
                for (int i = 0; i < kChanges; ++i) {
                    const QString name = nameOf(process, i);
                    own.Change([&](AccountModel& model) {
                        model.AddUser(name, QByteArray(60, 'h'));
                        model.AddGroup(name, {User(name)});
                        model.SetGroupMembers(u"all"_s, model.GroupMembers(u"all"_s) << User(name));
                        model.SetPermissions({u"r"_s, u'/' + name}, {{User(name), Access::Read}});
                        if (i < kKept)
                            return;
                        // Each of these is refused when the change that made it was lost.
                        const QString old = nameOf(process, i - kKept);
                        if (model.Permissions({u"r"_s, u'/' + old}).size() != 1)
                            ::_exit(1);
                        model.RemoveGroup(old);
                        model.RemoveUser(old);
                    });
                }
                ::_exit(0);
            } catch (...) {
                ::_exit(1);
            }
        }
        children.append(child);
    }
    int reads = 0;
    while (!children.isEmpty()) {
        int status = -1;
        const pid_t ended = ::waitpid(children.first(), &status, WNOHANG);
        ASSERT_GE(ended, 0);
        if (ended > 0) {
            EXPECT_EQ(status, 0) << "a change of the process was lost, or failed";
            children.removeFirst();
        }
        ++reads;
        ASSERT_NO_THROW(AccountDocument::Read(Content(u"accounts.json"_s), u"accounts"_s));
        ASSERT_TRUE(RulesParse());
        PasswordUsers();
    }
    EXPECT_GT(reads, 20);
    const std::shared_ptr<const AccountModel> all = Opened(m_path).store.Read();
    QStringList expected;
    for (int process = 0; process < kProcesses; ++process) {
        for (int i = kChanges - kKept; i < kChanges; ++i)
            expected.append(nameOf(process, i));
    }
    expected.sort();
    EXPECT_EQ(all->Users(), expected);
    EXPECT_EQ(all->Groups(), QStringList{u"all"_s} + expected);
    EXPECT_EQ(all->GroupMembers(u"all"_s).size(), expected.size());
    EXPECT_EQ(all->AllPermissions().size(), expected.size());
    EXPECT_EQ(PasswordUsers(), all->Users());
    EXPECT_EQ(Content(u"authz"_s).count("[r:/"), expected.size());
}

TEST_F(AccountsStoreTest, AKilledProcessLeavesWholeFilesAndEveryAcknowledgedChange)
{
    const int kills = KillCount(150);
    int done = 0; // changes that are known to stand
    for (int kill = 0; kill < kills; ++kill) {
        int acknowledged[2] = {-1, -1};
        ASSERT_EQ(::pipe(acknowledged), 0);
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            try {
                Opened own(m_path);
                for (int i = done;; ++i) {
                    own.Change([i](AccountModel& model) { ChangeStep(model, i, QByteArray(60, 'h')); });
                    const ssize_t written = ::write(acknowledged[1], "x", 1);
                    if (written != 1)
                        ::_exit(1);
                }
            } catch (...) {
                ::_exit(1);
            }
        }
        ::close(acknowledged[1]);
        // At a random point of a random change.
        char answer = 0;
        for (quint32 wanted = QRandomGenerator::global()->bounded(4U); wanted > 0; --wanted)
            done += static_cast<int>(::read(acknowledged[0], &answer, 1) == 1);
        ::usleep(QRandomGenerator::global()->bounded(4000U));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the process failed by itself";
        while (::read(acknowledged[0], &answer, 1) == 1)
            ++done;
        ::close(acknowledged[0]);

        ASSERT_TRUE(RulesParse());
        PasswordUsers();
        Opened next(m_path);
        next.Repair();
        EXPECT_EQ(TemporaryFiles(), QStringList());
        // The change that nobody heard of may stand or not, but whole.
        const std::shared_ptr<const AccountModel> now = next.store.Read();
        if (now->HasUser(u"u%1"_s.arg(done)))
            ++done;
        QStringList expected;
        for (int i = qMax(0, done - 3); i < done; ++i)
            expected.append(u"u%1"_s.arg(i));
        expected.sort();
        ASSERT_EQ(now->Users(), expected) << "after " << done;
        ASSERT_EQ(PasswordUsers(), expected);
        EXPECT_EQ(now->AllPermissions().size(), expected.size());
        EXPECT_EQ(Content(u"authz"_s).count("[r:/"), expected.size());
    }
    EXPECT_GT(done, kills / 2);
}

TEST_F(AccountsStoreTest, AFullDiskAndAFolderThatCannotBeWrittenLeaveTheOldStateWhole)
{
    Opened server(m_path);
    server.Change([](AccountModel& model) { model.AddUser(u"ann"_s, QByteArray(60, 'h')); });
    const auto before = Files();
    // The rules repeat the members of a group for each that holds it, and so become larger than the accounts.
    const AccountStore::Edit grow = [](AccountModel& model) {
        AccountModel::Members members;
        for (int i = 0; i < 200; ++i) {
            members.append(User(u"u%1"_s.arg(i)));
            model.AddUser(members.last().name, QByteArray(60, 'h'));
        }
        model.AddGroup(u"all"_s, members);
        for (int i = 0; i < 60; ++i) {
            const QString name = u"g%1"_s.arg(i);
            model.AddGroup(name, {Group(u"all"_s)});
            model.SetPermissions({u"r"_s, u'/' + name}, {{Group(name), Access::Read}});
        }
    };
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, SIG_IGN);
    // Room for nothing, and for the accounts but not for what is made from them.
    for (const rlim_t room : {rlim_t{100}, rlim_t{30'000}}) {
        const rlimit small{room, limit.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
        const HRESULT code = CodeOf([&] { server.Change(grow); });
        ::setrlimit(RLIMIT_FSIZE, &limit);
        EXPECT_EQ(code, WBEM_E_FAILED);
        EXPECT_EQ(Files(), before);
        EXPECT_EQ(TemporaryFiles(), QStringList());
    }
    const QByteArray folder = QFile::encodeName(m_path);
    const bool isRoot = ::geteuid() == 0;
    if (isRoot) {
        ASSERT_EQ(::chmod(QFile::encodeName(m_folder.path()).constData(), 0755), 0);
        for (const QString& name : QDir(m_path).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotDot))
            ASSERT_EQ(::chown(QFile::encodeName(m_path + u'/' + name).constData(), kNobody, kNobody), 0);
        ASSERT_EQ(::seteuid(kNobody), 0);
    }
    EXPECT_EQ(::chmod(folder.constData(), 0500), 0);
    const HRESULT code = CodeOf([&] { server.Change(grow); });
    EXPECT_EQ(server.store.Read()->Users(), QStringList{u"ann"_s});
    EXPECT_EQ(::chmod(folder.constData(), 0700), 0);
    ASSERT_EQ(isRoot ? ::seteuid(0) : 0, 0);
    EXPECT_EQ(code, WBEM_E_ACCESS_DENIED);
    EXPECT_EQ(Files(), before);
    server.Change(grow);
    EXPECT_EQ(server.store.Read()->Users().size(), 201);
}

TEST_F(AccountsStoreTest, DamagedAccountsAreNamedAndNeverOverwritten)
{
    Opened(m_path).Change([](AccountModel& model) {
        model.AddUser(u"ann"_s, "h");
        model.AddGroup(u"g"_s, {User(u"ann"_s)});
        model.AddGroup(u"i"_s, {Group(u"g"_s)});
        model.SetPermissions({u"r"_s, u"/"_s}, {{User(u"ann"_s), Access::Read}});
    });
    const QByteArray whole = Content(u"accounts.json"_s);
    const auto write = [this](const QByteArray& content) {
        QFile file(m_path + "/accounts.json"_L1);
        file.remove();
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    };
    const QList<std::pair<QByteArray, QByteArray>> faults{{"\"ann\":\"h\"", "\"bob\":\"h\""},
                                                          {"\"ann\":\"h\"", "\"ann\":\"h\\nroot:h\""},
                                                          {"[{\"user\":\"ann\"}]", "[{\"group\":\"i\"}]"},
                                                          {"\"access\":1", "\"access\":7"},
                                                          {"\"path\":\"/\"", "\"path\":\"/a]\\n* = rw\""},
                                                          {"\"format\":1", "\"format\":2"},
                                                          {"\"ann\":\"h\"", "\"a:b\":\"h\""},
                                                          {"\"user\":\"ann\"}],\"path\"", "}],\"path\""}};
    for (const auto& [from, to] : faults) {
        QByteArray damaged = whole;
        damaged.replace(from, to);
        ASSERT_NE(damaged, whole) << from.constData();
        write(damaged);
        Opened server(m_path);
        EXPECT_EQ(CodeOf([&] { server.store.Read(); }), WBEM_E_FAILED) << to.constData();
        EXPECT_EQ(CodeOf([&] { server.Repair(); }), WBEM_E_FAILED);
        EXPECT_EQ(Content(u"accounts.json"_s), damaged);
    }
    write(whole.first(whole.size() / 2));
    EXPECT_EQ(CodeOf([&] { Opened(m_path).store.Read(); }), WBEM_E_FAILED);
    QFile::remove(m_path + "/accounts.json"_L1);
    const auto left = Files();
    EXPECT_EQ(CodeOf([&] { Opened(m_path).Repair(); }), WBEM_E_FAILED); // the users' file tells that there were some
    EXPECT_EQ(Files(), left);
}

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
