#include "platform/mmc/result_view_type.h"
#include "snapin_test.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::LoadedSnapIn;
using test::Operation;

namespace
{

class ActionsTest : public test::SnapInTest
{
protected:
    ActionsTest() { server.data.repositories = {{u"web"_s}, {u"wiki"_s}}; }

    void LoadAndSelect(const QString& name)
    {
        Load();
        console.Expand(kRepositories);
        console.Expand(PathOf(name));
        console.Select(PathOf(name));
    }

    static QString PathOf(const QString& name) { return kRepositories + u'/' + name; }
    HRESULT Rename(const QString& name, const QString& newName)
    {
        return console.Notify(PathOf(name), MMC_NOTIFY_TYPE::MMCN_RENAME, newName);
    }

    static inline const QString kRepositories = u"Repositories"_s;
};

} // namespace

TEST_F(ActionsTest, RenameChecksAsksAndRenames)
{
    server.data.repositories[0].entries = {{u"/trunk"_s, true}};
    LoadAndSelect(u"web"_s);
    EXPECT_EQ(console.description, u"(https://srv1/svn/web)");
    for (const QString& same : {u"web"_s, u""_s}) {
        EXPECT_EQ(Rename(u"web"_s, same), S_FALSE);
        EXPECT_EQ(messages.texts, QStringList());
    }
    for (const QString& invalid : {u".ab"_s, u"ab."_s, u"a b"_s, u"a/b"_s, u"a\nb"_s, u"<b>"_s}) {
        messages.texts.clear();
        EXPECT_EQ(Rename(u"web"_s, invalid), S_FALSE);
        EXPECT_TRUE(messages.texts.value(0).startsWith(u"Invalid repository name."_s));
    }
    messages.texts.clear();
    EXPECT_EQ(Rename(u"web"_s, u"a.b"_s), S_FALSE);
    EXPECT_TRUE(messages.texts.value(0).endsWith(u"rename the repository 'web' to 'a.b'?"_s));
    EXPECT_EQ(messages.lastStyle.icon, MessageIcon::Warning);
    EXPECT_EQ(server.CallsOf(u"Rename"_s).size(), 0);

    messages.answer = MessageAnswer::Yes;
    const int updates = console.viewUpdates;
    EXPECT_EQ(Rename(u"web"_s, u"a.b"_s), S_OK);
    EXPECT_EQ(console.Children(kRepositories), (QStringList{u"a.b"_s, u"wiki"_s}));
    EXPECT_EQ(console.description, u"(https://srv1/svn/a.b)");
    EXPECT_EQ(console.viewUpdates, updates + 1);
    console.Select(u"Repositories/a.b/trunk"_s); // what was read before the renaming follows it
    EXPECT_EQ(console.description, u"(https://srv1/svn/a.b/trunk)");

    EXPECT_EQ(Rename(u"a.b"_s, u"wiki"_s), E_FAIL);
    EXPECT_EQ(messages.errors, QStringList{u"The repository already exists."_s});
    EXPECT_EQ(console.Children(kRepositories), (QStringList{u"a.b"_s, u"wiki"_s}));
    EXPECT_EQ(Rename(u"a.b"_s, u"Ж-9"_s), S_OK); // letters of any script
}

TEST(VerbsTest, FollowTheVersionAndTheKindOfItem)
{
    using Verb = MMC_CONSOLE_VERB;
    for (const auto& [version, renames] : {std::pair{u"2.5"_s, false}, {u"2.6"_s, true}, {u"3.3"_s, true}}) {
        LoadedSnapIn loaded(version);
        loaded.server.data.repositories = {{.name = u"r"_s, .entries = {{u"/d"_s, true}, {u"/f"_s, false}}}};
        loaded.Load();
        EXPECT_EQ(loaded.console.verbs, QSet{Verb::MMC_VERB_REFRESH});
        loaded.console.Expand(u"Repositories"_s);
        loaded.console.Expand(u"Repositories/r"_s);
        loaded.console.Select(u"Repositories/r"_s);
        EXPECT_EQ(loaded.console.verbs.contains(Verb::MMC_VERB_RENAME), renames) << version.toStdString();
        EXPECT_TRUE(loaded.console.verbs.contains(Verb::MMC_VERB_DELETE));
        for (const auto& [entry, verbs] :
             {std::pair{u"Repositories/r/d"_s, QSet{Verb::MMC_VERB_REFRESH, Verb::MMC_VERB_DELETE}},
              {u"Repositories/r/f"_s, QSet{Verb::MMC_VERB_REFRESH}}}) {
            loaded.console.Select(entry);
            EXPECT_EQ(loaded.console.verbs, verbs);
            EXPECT_EQ(loaded.console.Notify(entry, MMC_NOTIFY_TYPE::MMCN_RENAME, u"x"_s), E_NOTIMPL);
        }
    }
}

TEST_F(ActionsTest, DeleteAsksByTheKindOfRepository)
{
    server.data.repositories.append({.name = u"hub"_s, .type = 1});
    LoadAndSelect(u"web"_s);
    EXPECT_EQ(console.Notify(PathOf(u"web"_s), MMC_NOTIFY_TYPE::MMCN_DELETE), S_FALSE);
    EXPECT_TRUE(messages.texts.value(0).startsWith(u"Are you sure you want to delete repository 'web'?"_s));
    EXPECT_EQ(console.Notify(PathOf(u"hub"_s), MMC_NOTIFY_TYPE::MMCN_DELETE), S_FALSE);
    EXPECT_TRUE(messages.texts.value(1).startsWith(u"Are you sure you want to delete master repository 'hub'?"_s));
    EXPECT_EQ(console.Children(kRepositories).size(), 3);

    messages.answer = MessageAnswer::Yes;
    server.Fail(Operation::ExecMethod, u"Delete"_s, {WBEM_E_ACCESS_DENIED});
    EXPECT_EQ(console.Notify(PathOf(u"web"_s), MMC_NOTIFY_TYPE::MMCN_DELETE), E_FAIL);
    EXPECT_EQ(messages.errors.size(), 1);
    EXPECT_EQ(console.Notify(PathOf(u"web"_s), MMC_NOTIFY_TYPE::MMCN_DELETE), S_OK);
    EXPECT_EQ(console.Children(kRepositories), (QStringList{u"hub"_s, u"wiki"_s}));
    EXPECT_EQ(console.selected, kRepositories);
}

TEST_F(ActionsTest, DeletingAccountsAsksAndReloadsTheList)
{
    server.data.users = {u"ann"_s, u"bob"_s};
    server.data.groups = {{u"ops"_s}, {u"dev"_s}};
    Load();
    console.Select(u"Users"_s);
    EXPECT_EQ(console.NotifyListed(u"ann"_s, MMC_NOTIFY_TYPE::MMCN_DELETE), S_FALSE);
    EXPECT_EQ(messages.texts.value(0), u"Are you sure you want to delete user 'ann'?");
    EXPECT_EQ(messages.lastStyle.icon, MessageIcon::Question);
    messages.answer = MessageAnswer::Yes;
    EXPECT_EQ(console.NotifyListed(u"ann"_s, MMC_NOTIFY_TYPE::MMCN_DELETE), S_OK);
    EXPECT_EQ(console.Listed(), QStringList{u"bob"_s});
    console.Select(u"Groups"_s);
    console.NotifyListed(u"ops"_s, MMC_NOTIFY_TYPE::MMCN_DELETE);
    EXPECT_EQ(messages.texts.last(), u"Are you sure you want to delete group 'ops'?");
    EXPECT_EQ(console.Listed(), QStringList{u"dev"_s});
}

TEST_F(ActionsTest, ChangesOfTheModelReachTheTree)
{
    CModel& model = Load().Model();
    model.CreateRepository(u"early"_s, false); // not read yet: nothing to insert
    console.Expand(kRepositories);
    console.Select(kRepositories);
    EXPECT_EQ(console.Children(kRepositories), (QStringList{u"early"_s, u"web"_s, u"wiki"_s}));
    model.CreateRepository(u"web2"_s, false);
    model.CreateRepository(u"zoo"_s, true);
    EXPECT_EQ(console.Children(kRepositories), (QStringList{u"early"_s, u"web"_s, u"web2"_s, u"wiki"_s, u"zoo"_s}));
    model.DeleteRepository(u"web"_s);
    EXPECT_EQ(console.Children(kRepositories), (QStringList{u"early"_s, u"web2"_s, u"wiki"_s, u"zoo"_s}));
    model.ConvertToQdfs(u"wiki"_s);
    EXPECT_EQ(console.Text(PathOf(u"wiki"_s), 2), u"QDFS (master)");
    EXPECT_EQ(console.viewUpdates, 4);

    console.Select(u"Users"_s);
    model.CreateUser(u"ann"_s, u"secret"_s);
    EXPECT_EQ(console.Listed(), QStringList{u"ann"_s});
    model.CreateGroup(u"ops"_s, {}); // another list is shown: it is read when it is
    EXPECT_EQ(console.Listed(), QStringList{u"ann"_s});
    EXPECT_EQ(console.selected, u"Users");
    console.Select(u"Groups"_s);
    EXPECT_EQ(console.Listed(), QStringList{u"ops"_s});
}

TEST_F(ActionsTest, AViewThatFailsToFollowDoesNotFailTheChange)
{
    CModel& model = Load().Model();
    console.Expand(kRepositories);
    server.Fail(Operation::GetObject, u"Quenvolta_Repository"_s, {WBEM_E_FAILED}, 1, 1);
    EXPECT_NO_THROW(model.CreateRepository(u"new"_s, false));
    EXPECT_EQ(messages.errors.size(), 1);
}

TEST_F(ActionsTest, DoubleClickOpensScopeItems)
{
    server.data.users = {u"ann"_s};
    LoadAndSelect(u"web"_s);
    console.Select(kRepositories);
    EXPECT_EQ(console.Notify(PathOf(u"wiki"_s), MMC_NOTIFY_TYPE::MMCN_DBLCLICK), S_OK);
    EXPECT_EQ(console.selected, PathOf(u"wiki"_s));
    console.Select(u"Users"_s);
    EXPECT_EQ(console.NotifyListed(u"ann"_s, MMC_NOTIFY_TYPE::MMCN_DBLCLICK), S_FALSE);
    EXPECT_EQ(console.selected, u"Users");
}

TEST_F(ActionsTest, ForeignObjectsAreRefused)
{
    struct Foreign : IDataObject {
        HRESULT GetData(const QString&, QByteArray*) const override { return DV_E_FORMATETC; }
    };
    CMMCStandaloneData& snapIn = Load();
    const MMCNotification expand{.type = MMC_NOTIFY_TYPE::MMCN_EXPAND, .on = true};
    EXPECT_EQ(snapIn.Notify(std::make_shared<Foreign>(), expand), E_UNEXPECTED);
    EXPECT_NE(snapIn.Notify({}, expand), E_UNEXPECTED); // the console's special objects stand for the root
}

} // namespace quenvolta
