#include "accounts_store_fixture.h"
#include "kill_count.h"
#include "provider/accounts/account_document.h"

#include <QRandomGenerator>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quenvolta
{

namespace
{

constexpr uid_t kNobody = 65534;

class AccountsStoreFaultsTest : public AccountsStoreFixture
{
};

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

TEST_F(AccountsStoreFaultsTest, ProcessesThatChangeAtOnceLoseNothing)
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

TEST_F(AccountsStoreFaultsTest, AKilledProcessLeavesWholeFilesAndEveryAcknowledgedChange)
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

TEST_F(AccountsStoreFaultsTest, AFullDiskAndAFolderThatCannotBeWrittenLeaveTheOldStateWhole)
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

TEST_F(AccountsStoreFaultsTest, DamagedAccountsAreNamedAndNeverOverwritten)
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

} // namespace quenvolta
