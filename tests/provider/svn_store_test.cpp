#include "provider/svn/hidden_folder.h"
#include "svn_fixture.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace quenvolta
{

namespace
{

using SvnStore = SvnFixture;

TEST_F(SvnStore, ListsRepositoriesAndNothingElse)
{
    MakeRepository(u"b"_s);
    m_store.Create(u"a"_s);
    Run(u"svn"_s, {u"mkdir"_s, u"-qm"_s, u""_s, UrlOf(u"b"_s) + u"/trunk"_s});
    MakeRepository(u".creating-me"_s);
    QDir(m_root).mkdir(u"plain"_s);
    Write(PathOf(u"file"_s), "x");
    Run(u"svnadmin"_s, {u"create"_s, m_outside + u"/linked"_s});
    QFile::link(m_outside + u"/linked"_s, PathOf(u"link"_s));
    QFile::link(m_outside + u"/nowhere"_s, PathOf(u"dangling"_s));
    Run(u"cp"_s, {u"-a"_s, PathOf(u"a"_s), PathOf(u"old\\name."_s)}); // not a name for a new one, but there
    const std::string notUtf8 = m_root.toStdString() + "/\xff";
    ASSERT_EQ(::mkdir(notUtf8.c_str(), 0700), 0);

    const auto records = m_store.List();
    EXPECT_EQ(ListedNames(), (QStringList{u"a"_s, u"b"_s, u"link"_s, u"old\\name."_s}));
    EXPECT_EQ(records.at(0).youngestRevision, 0U);
    EXPECT_EQ(records.at(1).youngestRevision, 1U);
    EXPECT_EQ(m_store.Read(u"b"_s).youngestRevision, 1U);
    for (const QString& name : {u"plain"_s, u"file"_s, u"dangling"_s, u"absent"_s}) {
        EXPECT_FALSE(m_store.Exists(name));
        EXPECT_EQ(ErrorOf([&] { m_store.Read(name); }).Code(), WBEM_E_NOT_FOUND);
        EXPECT_EQ(ErrorOf([&] { m_store.Delete(name); }).Code(), WBEM_E_NOT_FOUND);
        EXPECT_EQ(ErrorOf([&] { m_store.Rename(name, u"new"_s); }).Code(), WBEM_E_NOT_FOUND);
    }
    EXPECT_TRUE(QFile::exists(PathOf(u"plain"_s)));
    EXPECT_EQ(ErrorOf([&] { m_store.List([] { return true; }); }).Code(), WBEM_E_CALL_CANCELLED);
    ::rmdir(notUtf8.c_str()); // the temporary folder can't remove it
}

TEST_F(SvnStore, DamagedRepositoriesHideNobodyAndCanBeDeleted)
{
    const QStringList damaged{u"current"_s, u"format"_s, u"fsfs"_s};
    for (const QString& name : damaged + QStringList{u"sound"_s})
        MakeRepository(name);
    QFile::remove(PathOf(u"current/db/current"_s));
    Write(PathOf(u"format/format"_s), "\x80garbage\n");
    Write(PathOf(u"fsfs/db/fsfs.conf"_s), "[caches\nbroken");

    const auto records = m_store.List();
    EXPECT_EQ(ListedNames(), (QStringList{u"current"_s, u"format"_s, u"fsfs"_s, u"sound"_s}));
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_FALSE(records.at(i).youngestRevision.has_value());
        const ProviderError error = ErrorOf([&] { m_store.Read(records.at(i).name); });
        EXPECT_EQ(error.Code(), WBEM_E_FAILED) << error.what();
        EXPECT_TRUE(error.Description().contains(u"'%1'"_s.arg(records.at(i).name))) << error.what();
        EXPECT_TRUE(error.Details().startsWith(u'E')) << error.Details().toStdString();
        EXPECT_TRUE(m_store.Exists(records.at(i).name));
        m_store.Delete(records.at(i).name);
    }
    EXPECT_FALSE(records.at(3).error.has_value());
    EXPECT_EQ(ListedNames(), QStringList{u"sound"_s});
}

TEST_F(SvnStore, CreatesWhatTheStockToolsAccept)
{
    m_store.Create(u"new"_s);
    Run(u"svnadmin"_s, {u"verify"_s, u"-q"_s, PathOf(u"new"_s)});
    Run(u"svn"_s, {u"mkdir"_s, u"-qm"_s, u""_s, UrlOf(u"new"_s) + u"/trunk"_s});
    EXPECT_TRUE(m_store.HasCapability(u"new"_s, u"mergeinfo"_s));
    EXPECT_FALSE(m_store.HasCapability(u"new"_s, u"no-such-thing"_s));
    struct stat status {
    };
    ASSERT_EQ(::stat(PathOf(u"new"_s).toUtf8().constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
    EXPECT_TRUE(HiddenNames().isEmpty());
}

TEST_F(SvnStore, UpgradesAnOldFormat)
{
    Run(u"svnadmin"_s, {u"create"_s, u"--compatible-version"_s, u"1.4"_s, PathOf(u"old"_s)});
    EXPECT_FALSE(m_store.HasCapability(u"old"_s, u"mergeinfo"_s));
    m_store.Upgrade(u"old"_s);
    EXPECT_TRUE(m_store.HasCapability(u"old"_s, u"mergeinfo"_s));
    Run(u"svnadmin"_s, {u"verify"_s, u"-q"_s, PathOf(u"old"_s)});
}

TEST_F(SvnStore, NeverReplacesWhatHasTheName)
{
    MakeRepository(u"one"_s);
    MakeRepository(u"two"_s);
    QDir(m_root).mkdir(u"empty"_s); // the one thing that a plain rename would replace
    QFile::link(m_outside + u"/nowhere"_s, PathOf(u"dangling"_s));
    const QStringList before = Listing();
    for (const QString& name : {u"two"_s, u"empty"_s, u"dangling"_s}) {
        EXPECT_EQ(ErrorOf([&] { m_store.Create(name); }).Code(), WBEM_E_ALREADY_EXISTS);
        const ProviderError error = ErrorOf([&] { m_store.Rename(u"one"_s, name); });
        EXPECT_EQ(error.Code(), WBEM_E_ALREADY_EXISTS);
        EXPECT_TRUE(error.Description().contains(name));
    }
    EXPECT_EQ(Listing(), before);
    m_store.Rename(u"one"_s, u"three"_s);
    EXPECT_EQ(ListedNames(), (QStringList{u"three"_s, u"two"_s}));
}

TEST_F(SvnStore, OneOfManyWinsTheName)
{
    std::atomic<int> created = 0;
    std::atomic<int> refused = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 6; ++i) {
        threads.emplace_back([&] {
            const HRESULT code = ErrorOf([&] { m_store.Create(u"same"_s); }).Code();
            ++(code == S_OK ? created : refused);
            EXPECT_TRUE(code == S_OK || code == WBEM_E_ALREADY_EXISTS);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(created, 1);
    EXPECT_EQ(refused, 5);
    EXPECT_TRUE(HiddenNames().isEmpty());
    EXPECT_EQ(m_store.Read(u"same"_s).youngestRevision, 0U);
}

TEST_F(SvnStore, DeletingNeverLeavesTheRoot)
{
    MakeRepository(u"victim"_s);
    QFile::link(m_outside, PathOf(u"victim/db/out"_s));
    QFile::link(m_outside + u"/precious"_s, PathOf(u"victim/hooks/precious"_s));
    Run(u"svnadmin"_s, {u"create"_s, m_outside + u"/linked"_s});
    QFile::link(m_outside + u"/linked"_s, PathOf(u"link"_s));
    m_store.Delete(u"victim"_s);
    m_store.Rename(u"link"_s, u"renamed"_s);
    m_store.Delete(u"renamed"_s);
    EXPECT_TRUE(
        QDir(m_root).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot).isEmpty());
    EXPECT_TRUE(QFile::exists(m_outside + u"/precious"_s));
    EXPECT_TRUE(QFile::exists(m_outside + u"/linked/format"_s));
}

TEST_F(SvnStore, CleansOnlyWhatDeadProcessesLeft)
{
    const int root = ::open(m_root.toUtf8().constData(), O_RDONLY | O_DIRECTORY);
    const pid_t child = ::fork();
    if (child == 0) { // dies in the middle of a deletion
        const HiddenFolder left(m_root, root, HiddenFolder::kDeleting);
        ::symlinkat("../../outside", left.Fd(), "out");
        ::_exit(0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    const QString foreign = u".creating-notes"_s;
    QDir(m_root).mkdir(foreign);
    QFile::link(m_outside, PathOf(u".deleting-0123456789abcdef0123456789abcdef"_s));
    const HiddenFolder alive(m_root, root, HiddenFolder::kCreating);
    ASSERT_EQ(HiddenNames().size(), 4);

    EXPECT_EQ(m_store.CleanLeftovers(), 1);
    EXPECT_EQ(HiddenNames().size(), 3);
    EXPECT_TRUE(QFile::exists(alive.Path()));
    EXPECT_TRUE(QFile::exists(PathOf(foreign)));
    EXPECT_TRUE(QFile::exists(m_outside + u"/precious"_s));
    ::close(root);
}

TEST_F(SvnStore, SaysWhyTheRootCannotBeUsed)
{
    MakeRepository(u"kept"_s);
    MakeRepository(u"private"_s);
    QFile::setPermissions(m_temporary.path(), QFile::Permissions(0x7755));
    ASSERT_EQ(::chmod(PathOf(u"private"_s).toUtf8().constData(), 0), 0);
    ASSERT_EQ(::chmod(m_root.toUtf8().constData(), 0555), 0);
    const bool isRoot = ::geteuid() == 0;
    ASSERT_EQ(::seteuid(isRoot ? 65534 : ::geteuid()), 0); // no permission applies to root
    const std::vector<ProviderError> errors{
        ErrorOf([&] { m_store.Create(u"new"_s); }), ErrorOf([&] { m_store.Rename(u"kept"_s, u"new"_s); }),
        ErrorOf([&] { m_store.Delete(u"kept"_s); }), ErrorOf([&] { m_store.Read(u"private"_s); })};
    const auto records = m_store.List();
    ASSERT_EQ(::seteuid(isRoot ? 0 : ::geteuid()), 0);
    ::chmod(m_root.toUtf8().constData(), 0755);
    ::chmod(PathOf(u"private"_s).toUtf8().constData(), 0755);
    for (const ProviderError& error : errors)
        EXPECT_EQ(error.Code(), WBEM_E_ACCESS_DENIED) << error.what();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records.at(1).error.value().Code(), WBEM_E_ACCESS_DENIED);

    const RepositoryStore nowhere(m_root + u"/absent"_s);
    for (const ProviderError& error : {ErrorOf([&] { nowhere.List(); }), ErrorOf([&] { nowhere.Create(u"new"_s); })}) {
        EXPECT_EQ(error.Code(), WBEM_E_FAILED); // not WBEM_E_NOT_FOUND: that would say "no such repository"
        EXPECT_TRUE(error.Description().contains(u"/absent"_s));
    }
    EXPECT_FALSE(QFile::exists(m_root + u"/absent"_s));
}

} // namespace

} // namespace quenvolta
