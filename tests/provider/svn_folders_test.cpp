#include "svn_fixture.h"

#include <sys/stat.h>
#include <thread>

namespace quenvolta
{

namespace
{

class SvnFolders : public SvnFixture
{
protected:
    void SetUp() override
    {
        SvnFixture::SetUp();
        MakeRepository(kName);
    }

    QStringList Transactions() const
    {
        return QDir(PathOf(kName) + u"/db/transactions"_s).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }
    QString Tree() const { return Run(u"svnlook"_s, {u"tree"_s, u"--full-paths"_s, PathOf(kName)}); }
    ProviderError CreateError(const QStringList& paths) const
    {
        return ErrorOf([&] { m_store.CreateFolders(kName, paths, {}); });
    }
    ProviderError DeleteError(const QStringList& paths) const
    {
        return ErrorOf([&] { m_store.DeleteFolders(kName, paths, {}); });
    }

    const QString kName = u"repo"_s;
};

TEST_F(SvnFolders, OneCommitWithMessageAndAuthorAndNoHooks)
{
    for (const QString& hook : {u"start-commit"_s, u"pre-commit"_s, u"post-commit"_s}) {
        const QString path = PathOf(kName) + u"/hooks/"_s + hook;
        Write(path, "#!/bin/sh\ntouch " + m_outside.toUtf8() + "/ran\nexit 1\n");
        ASSERT_EQ(::chmod(path.toUtf8().constData(), 0755), 0);
    }
    EXPECT_EQ(m_store.CreateFolders(kName, {u"/web/trunk"_s, u"/web"_s, u"/web/tags"_s}, // a child first
                                    {u"Größe\r\nzwei\rdrei\vx"_s + QChar(0xD83D), u"sally"_s}),
              1U);
    EXPECT_EQ(Run(u"svn"_s, {u"log"_s, u"-q"_s, UrlOf(kName)}).count(u"sally"_s), 1);
    EXPECT_EQ(Run(u"svn"_s, {u"propget"_s, u"--revprop"_s, u"-r1"_s, u"svn:log"_s, u"--no-newline"_s, UrlOf(kName)}),
              u"Größe\nzwei\ndrei\uFFFDx\uFFFD"_s);
    EXPECT_EQ(Run(u"svn"_s, {u"log"_s, u"-v"_s, UrlOf(kName)}).count(u"   A /web"_s), 3);
    EXPECT_EQ(m_store.DeleteFolders(kName, {u"/web/tags"_s, u"/web/trunk"_s, u"/web"_s}, {u"gone"_s, {}}), 2U);
    EXPECT_EQ(Tree(), u"/\n"_s);
    EXPECT_EQ(Run(u"svnlook"_s, {u"author"_s, PathOf(kName)}).trimmed(), Run(u"id"_s, {u"-un"_s}).trimmed());
    EXPECT_FALSE(Run(u"svnlook"_s, {u"date"_s, PathOf(kName)}).trimmed().isEmpty());
    EXPECT_FALSE(QFile::exists(m_outside + u"/ran"_s));
    Run(u"svnadmin"_s, {u"verify"_s, u"-q"_s, PathOf(kName)});
}

TEST_F(SvnFolders, RefusedListsChangeNothing)
{
    Write(m_temporary.path() + u"/file"_s, "text");
    Run(u"svn"_s, {u"import"_s, u"-qm"_s, u""_s, m_temporary.path() + u"/file"_s, UrlOf(kName) + u"/dir/file"_s});
    const QString before = Tree();

    const ProviderError parent = CreateError({u"/ok"_s, u"/none/sub"_s});
    EXPECT_EQ(parent.Code(), WBEM_E_NOT_FOUND);
    EXPECT_TRUE(parent.Description().contains(u"'/none'"_s)) << parent.what();
    EXPECT_EQ(CreateError({u"/ok"_s, u"/dir"_s}).Code(), WBEM_E_ALREADY_EXISTS);
    EXPECT_EQ(CreateError({u"/"_s}).Code(), WBEM_E_ALREADY_EXISTS);
    EXPECT_EQ(CreateError({u"/ok"_s, u"/dir/file/sub"_s}).Code(), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(CreateError({u"/ok"_s, u"/ok"_s}).Code(), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(CreateError({}).Code(), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(DeleteError({u"/dir"_s, u"/none"_s}).Code(), WBEM_E_NOT_FOUND);
    EXPECT_EQ(DeleteError({u"/dir"_s, u"/dir/none"_s}).Code(), WBEM_E_NOT_FOUND);
    EXPECT_EQ(DeleteError({u"/dir"_s, u"/"_s}).Code(), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(ErrorOf([&] { m_store.CreateFolders(kName, {u"/ok"_s}, {}, [] { return true; }); }).Code(),
              WBEM_E_CALL_CANCELLED);
    Run(u"svn"_s, {u"lock"_s, u"--username"_s, u"sally"_s, UrlOf(kName) + u"/dir/file"_s});
    const ProviderError locked = DeleteError({u"/dir"_s});
    EXPECT_EQ(locked.Code(), WBEM_E_FAILED);
    EXPECT_TRUE(locked.Description().contains(u"sally"_s)) << locked.what();

    EXPECT_EQ(Tree(), before);
    EXPECT_TRUE(Transactions().isEmpty());
}

TEST_F(SvnFolders, ReadsEntriesOfTheYoungestRevision)
{
    m_store.CreateFolders(kName, {u"/b"_s, u"/b/deep"_s, u"/a"_s}, {});
    Write(m_temporary.path() + u"/file"_s, "text");
    Run(u"svn"_s, {u"import"_s, u"-qm"_s, u""_s, m_temporary.path() + u"/file"_s, UrlOf(kName) + u"/c.txt"_s});

    const auto children = m_store.Children(kName, u"/"_s);
    ASSERT_EQ(children.size(), 3U);
    EXPECT_EQ(children.at(0).path, u"/a"_s);
    EXPECT_EQ(children.at(2).name, u"c.txt"_s);
    EXPECT_FALSE(children.at(2).isFolder);
    EXPECT_EQ(m_store.Children(kName, u"/b"_s).at(0).path, u"/b/deep"_s);
    const RepositoryEntry deep = m_store.Entry(kName, u"/b/deep"_s);
    EXPECT_EQ(deep.name + deep.parentPath, u"deep/b"_s);
    EXPECT_TRUE(deep.isFolder);
    EXPECT_EQ(m_store.Entry(kName, u"/a"_s).parentPath, u"/"_s);
    EXPECT_TRUE(m_store.Entry(kName, u"/"_s).parentPath.isEmpty());
    EXPECT_EQ(ErrorOf([&] { m_store.Children(kName, u"/c.txt"_s); }).Code(), WBEM_E_INVALID_PARAMETER);
    for (const QString& path : {u"/none"_s, u"/c.txt/x"_s}) {
        EXPECT_EQ(ErrorOf([&] { m_store.Children(kName, path); }).Code(), WBEM_E_NOT_FOUND);
        EXPECT_EQ(ErrorOf([&] { m_store.Entry(kName, path); }).Code(), WBEM_E_NOT_FOUND);
    }
}

TEST_F(SvnFolders, CommitsThatComeBetween)
{
    // The check for cancellation is where others get their turn.
    const auto meanwhile = [this](const QString& path) {
        return [this, path, done = false]() mutable {
            if (!std::exchange(done, true))
                m_store.CreateFolders(kName, {path}, {});
            return false;
        };
    };
    EXPECT_EQ(m_store.CreateFolders(kName, {u"/mine"_s}, {}, meanwhile(u"/theirs"_s)), 2U);
    EXPECT_EQ(ErrorOf([&] { m_store.CreateFolders(kName, {u"/same"_s}, {}, meanwhile(u"/same"_s)); }).Code(),
              WBEM_E_ALREADY_EXISTS);
    // Removing a folder that somebody has just changed is out of date at first, and done at the second attempt.
    EXPECT_EQ(m_store.DeleteFolders(kName, {u"/theirs"_s}, {}, meanwhile(u"/theirs/new"_s)), 5U);
    EXPECT_EQ(Tree(), u"/\nmine/\nsame/\n"_s);
    EXPECT_TRUE(Transactions().isEmpty());
}

TEST_F(SvnFolders, ParallelCommitsAllArrive)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([this, i] {
            for (int j = 0; j < 5; ++j)
                m_store.CreateFolders(kName, {u"/f%1-%2"_s.arg(i).arg(j)}, {});
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(m_store.Children(kName, u"/"_s).size(), 20U);
    EXPECT_EQ(m_store.Read(kName).youngestRevision, 20U);
    EXPECT_TRUE(Transactions().isEmpty());
}

TEST_F(SvnFolders, ARestoredCopyIsReadAnew)
{
    const QString backup = m_outside + u"/backup"_s;
    Run(u"cp"_s, {u"-a"_s, PathOf(kName), backup});
    m_store.CreateFolders(kName, {u"/before"_s, u"/before/inner"_s}, {});
    EXPECT_EQ(m_store.Children(kName, u"/before"_s).size(), 1U);
    m_store.Delete(kName);
    Run(u"cp"_s, {u"-a"_s, backup, PathOf(kName)}); // the same identity, another revision 1
    Run(u"svn"_s, {u"mkdir"_s, u"-qm"_s, u""_s, UrlOf(kName) + u"/after"_s, UrlOf(kName) + u"/after/x"_s});
    EXPECT_EQ(m_store.Children(kName, u"/"_s).at(0).name, u"after"_s);
    EXPECT_EQ(m_store.Children(kName, u"/after"_s).at(0).name, u"x"_s);
}

} // namespace

} // namespace quenvolta
