#include "platform/mmc/clipboard_format.h"
#include "platform/mmc/result_view_type.h"
#include "snapin_test.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::LoadedSnapIn;
using test::Operation;

namespace
{

class TreeTest : public test::SnapInTest
{
};

const QString kRepositories = u"Repositories"_s;

QString Text(const DataObjectPtr& object, const QString& format)
{
    QByteArray data;
    EXPECT_EQ(object->GetData(format, &data), S_OK);
    return QString(reinterpret_cast<const QChar*>(data.constData()), data.size() / 2 - 1);
}

} // namespace

TEST_F(TreeTest, ShowsRepositoriesInNaturalOrder)
{
    server.data.repositories = {{u"rel10"_s}, {u"rel9"_s}, {u"Beta"_s}, {u"alpha"_s}};
    server.data.repositories[0].entries = {{u"/file10"_s, false}, {u"/file9"_s, false},  {u"/z"_s, true},
                                           {u"/z/deep"_s, false}, {u"/README"_s, false}, {u"/a2"_s, true},
                                           {u"/a10"_s, true}};
    Load();
    EXPECT_EQ(console.Children({}), (QStringList{kRepositories, u"Users"_s, u"Groups"_s}));
    EXPECT_EQ(console.insertions, 3); // nothing is read before it is wanted
    console.Expand(kRepositories);
    EXPECT_EQ(console.Children(kRepositories), (QStringList{u"alpha"_s, u"Beta"_s, u"rel9"_s, u"rel10"_s}));
    console.Expand(u"Repositories/rel10"_s);
    EXPECT_EQ(console.Children(u"Repositories/rel10"_s),
              (QStringList{u"a2"_s, u"a10"_s, u"z"_s, u"file9"_s, u"file10"_s, u"README"_s}));
    console.Expand(u"Repositories/rel10/z"_s);
    EXPECT_EQ(console.Children(u"Repositories/rel10/z"_s), QStringList{u"deep"_s});
    EXPECT_EQ(server.CallsOf(u"GetChildren"_s).value(1).in.value(u"Path"_s), Variant(u"/z"_s));
}

TEST_F(TreeTest, DescribesItemsToTheConsole)
{
    server.data.repositories = {{.name = u"web"_s, .entries = {{u"/trunk"_s, true}, {u"/note"_s, false}}}};
    Load();
    console.Expand(kRepositories);
    console.Expand(u"Repositories/web"_s);
    struct Row {
        QString path;
        std::uint32_t mask;
        int image;
        QString nodeType;
    };
    const Row rows[] = {
        {kRepositories, 0x2E, 2, u"{B1858DBB-2A4E-4519-B3A6-6CECA91BFCB6}"_s},
        {u"Users"_s, 0x6E, 6, u"{E9EDD1AC-9D38-4339-BFEB-82619EAAAFE3}"_s},
        {u"Groups"_s, 0x6E, 6, u"{8C2EC820-A541-49B3-8410-847A735BA878}"_s},
        {u"Repositories/web"_s, 0x2E, 4, u"{75303CE5-43D8-485A-8866-9CE7E7A7A35B}"_s},
        {u"Repositories/web/trunk"_s, 0x2E, 6, u"{75303CE5-43D8-485A-8866-9CE7E7A7A35B}"_s},
        {u"Repositories/web/note"_s, 0x6E, 8, u"{75303CE5-43D8-485A-8866-9CE7E7A7A35B}"_s},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path.toStdString());
        const SCOPEDATAITEM item = console.Item(row.path);
        EXPECT_EQ(item.mask & ~SDI_NEXT, row.mask);
        EXPECT_EQ(item.nImage, row.image);
        EXPECT_EQ(item.nOpenImage, row.image);
        EXPECT_EQ(Text(console.Object(row.path), CCF_SZNODETYPE), row.nodeType);
        EXPECT_EQ(Text(console.Object(row.path), CCF_DISPLAY_NAME), row.path.section(u'/', -1));
    }
    const DataObjectPtr root = console.Object({});
    QByteArray bytes;
    EXPECT_EQ(root->GetData(u"CCF_SOMETHING"_s, &bytes), DV_E_FORMATETC);
    EXPECT_EQ(root->GetData(CCF_NODETYPE, &bytes), S_OK);
    EXPECT_EQ(bytes.toHex(), "147a1b13f8b8b343bc0fd405dff046e3");
    EXPECT_EQ(root->GetData(CCF_SNAPIN_PRELOADS, &bytes), S_OK);
    EXPECT_EQ(bytes.toHex(), "01000000");
    EXPECT_EQ(console.Object(kRepositories)->GetData(CCF_SNAPIN_PRELOADS, &bytes), S_OK);
    EXPECT_EQ(bytes.toHex(), "00000000");
}

TEST_F(TreeTest, ExplicitPermissionsChangeImages)
{
    server.data.service[u"AuthType"_s] = 1U; // the server-wide permissions can be read
    server.data.repositories = {{.name = u"web"_s, .entries = {{u"/trunk"_s, true}, {u"/note"_s, false}}}};
    for (const auto& target :
         {std::pair{u""_s, u""_s}, {u"web"_s, u"/"_s}, {u"web"_s, u"/trunk"_s}, {u"web"_s, u"/note"_s}})
        server.data.permissions[target] = {{u"Quenvolta_Everyone"_s, u"Everyone"_s, 1}};
    CModel& model = Load().Model();
    console.Expand(kRepositories);
    console.Expand(u"Repositories/web"_s);
    EXPECT_EQ(console.Item(kRepositories).nImage, 3);
    EXPECT_EQ(console.Item(u"Repositories/web"_s).nImage, 5);
    EXPECT_EQ(console.Item(u"Repositories/web/trunk"_s).nImage, 7);
    EXPECT_EQ(console.Item(u"Repositories/web/note"_s).nImage, 9);

    model.SetSecurity({{}, u"/"_s}, {});
    model.SetSecurity({u"web"_s, u"/"_s}, {});
    model.SetSecurity({u"web"_s, u"/trunk"_s}, {});
    EXPECT_EQ(console.Item(kRepositories).nImage, 2);
    EXPECT_EQ(console.Item(u"Repositories/web"_s).nImage, 4);
    EXPECT_EQ(console.Item(u"Repositories/web/trunk"_s).nImage, 6);
    EXPECT_EQ(console.Item(u"Repositories/web/note"_s).nImage, 9);
    model.SetSecurity({u"web"_s, u"/not/shown"_s}, {}); // nothing to show, nothing to fail
    EXPECT_EQ(messages.errors, QStringList());
}

TEST(OldServerTest, PermissionsAreAskedOfEachRepository)
{
    LoadedSnapIn old(u"2.5"_s);
    old.server.data.repositories = {{u"open"_s}, {u"closed"_s}, {u"broken"_s}};
    old.server.data.permissions[{u"closed"_s, u"/"_s}] = {{u"Quenvolta_Everyone"_s, u"Everyone"_s, 0}};
    old.server.data.permissions[{u""_s, u""_s}] = {{u"Quenvolta_Everyone"_s, u"Everyone"_s, 0}};
    // The server-wide list and the first repository ("broken") in the order of the list: the second reading fails.
    old.server.Fail(Operation::GetObject, u"Quenvolta_SecurityDescriptor"_s, {WBEM_E_FAILED}, 1, 1);
    old.Load();
    old.console.Expand(kRepositories);
    EXPECT_EQ(old.console.Item(kRepositories).nImage, 3);
    EXPECT_EQ(old.console.Item(u"Repositories/open"_s).nImage, 4);
    EXPECT_EQ(old.console.Item(u"Repositories/closed"_s).nImage, 5);
    EXPECT_EQ(old.console.Item(u"Repositories/broken"_s).nImage, 4);
    EXPECT_EQ(old.messages.errors, QStringList());
}

TEST(ColumnsTest, FollowTheServersVersion)
{
    struct Row {
        QString version;
        QStringList columns;
    };
    for (const Row& row :
         {Row{u"2.8"_s, {u"Name 200"_s}}, Row{u"3.0"_s, {u"Name 200"_s, u"Revisions 100"_s, u"Type 120"_s}}}) {
        LoadedSnapIn loaded(row.version);
        loaded.Load();
        loaded.console.Expand(kRepositories);
        loaded.console.Select(kRepositories);
        EXPECT_EQ(loaded.console.columns, row.columns);
    }
    LoadedSnapIn loaded;
    loaded.server.data.repositories = {{.name = u"a"_s, .type = 0, .revisions = 12},
                                       {.name = u"b"_s, .type = 1, .revisions = 0},
                                       {.name = u"c"_s, .type = 2, .masterServer = u"m"_s, .masterRepository = u"r"_s},
                                       {.name = u"d"_s, .type = {}, .revisions = {}},
                                       {.name = u"e"_s, .type = 77}};
    loaded.Load();
    loaded.console.Expand(kRepositories);
    QStringList texts;
    for (const QString& name : loaded.console.Children(kRepositories)) {
        for (int column = 0; column < 3; ++column)
            texts.append(loaded.console.Text(kRepositories + u'/' + name, column));
    }
    EXPECT_EQ(texts, (QStringList{u"a"_s, u"12"_s, u"FSFS"_s, u"b"_s, u"0"_s, u"QDFS (master)"_s, u"c"_s, u"0"_s,
                                  u"QDFS (slave)"_s, u"d"_s, u"unavailable"_s, u"unavailable"_s, u"e"_s, u"0"_s,
                                  u"unavailable"_s}));
}

TEST_F(TreeTest, UsersAndGroupsAreListedUnderSubversionAuthentication)
{
    server.data.users = {u"zoe"_s, u"ann"_s};
    server.data.groups = {{u"ops"_s}};
    Load();
    console.Select(u"Users"_s);
    EXPECT_EQ(console.columns, QStringList{u"Name 200"_s});
    EXPECT_EQ(console.Listed(), (QStringList{u"zoe"_s, u"ann"_s})); // the server's order
    console.NotifyListed(u"ann"_s, MMC_NOTIFY_TYPE::MMCN_SELECT);
    EXPECT_EQ(console.verbs, QSet{MMC_CONSOLE_VERB::MMC_VERB_DELETE});
    console.Select(u"Groups"_s);
    EXPECT_EQ(console.Listed(), QStringList{u"ops"_s});

    server.data.service[u"AuthType"_s] = 1U;
    console.Select({});
    console.Notify({}, MMC_NOTIFY_TYPE::MMCN_REFRESH);
    EXPECT_EQ(console.Children({}), QStringList{kRepositories});
    EXPECT_EQ(console.statusTexts.value(0), u"Refreshing...");
    EXPECT_EQ(console.statusTexts.last(), QString());
    server.data.service[u"AuthType"_s] = 0U;
    console.Notify({}, MMC_NOTIFY_TYPE::MMCN_REFRESH);
    EXPECT_EQ(console.Children({}), (QStringList{kRepositories, u"Users"_s, u"Groups"_s}));
}

TEST_F(TreeTest, AFailedReadingIsShownAndARefreshEndsIt)
{
    server.data.repositories = {{u"web"_s}};
    Load();
    server.Fail(Operation::EnumerateInstances, u"Quenvolta_Repository"_s, {E_ACCESSDENIED}, 1);
    console.Expand(kRepositories);
    console.Select(kRepositories);
    EXPECT_EQ(console.viewType, CLSID_MessageView);
    EXPECT_EQ(console.errorTitle, u"Unable to access repositories");
    EXPECT_TRUE(console.errorBody.contains(u"0x80070005"_s)) << console.errorBody.toStdString();
    EXPECT_EQ(console.columns, QStringList());
    EXPECT_EQ(console.Notify(kRepositories, MMC_NOTIFY_TYPE::MMCN_REFRESH), S_OK);
    EXPECT_EQ(console.viewType, QString());
    EXPECT_EQ(console.Children(kRepositories), QStringList{u"web"_s});

    server.Handle(u"Quenvolta_Repository"_s, u"GetChildren"_s, [](auto&) { return WBEM_E_FAILED; });
    console.Expand(u"Repositories/web"_s);
    console.Select(u"Repositories/web"_s);
    EXPECT_EQ(console.errorTitle, u"Unable to access repository");
    server.Handle(u"Quenvolta_Repository"_s, u"GetChildren"_s,
                  [](auto& call) { return call.out->Put(u"Children"_s, QList<WbemObjectPtr>()); });
    console.Notify(u"Repositories/web"_s, MMC_NOTIFY_TYPE::MMCN_REFRESH);
    EXPECT_EQ(console.viewType, QString());
    EXPECT_FALSE(console.description.isEmpty());

    server.Fail(Operation::EnumerateInstances, u"Quenvolta_User"_s, {WBEM_E_FAILED}, 1);
    console.Select(u"Users"_s);
    EXPECT_EQ(console.viewType, CLSID_MessageView);
    EXPECT_EQ(console.errorTitle, u"Unable to access users");
    console.Notify(u"Users"_s, MMC_NOTIFY_TYPE::MMCN_REFRESH);
    EXPECT_EQ(console.viewType, QString());
    server.Fail(Operation::EnumerateInstances, u"Quenvolta_Group"_s, {WBEM_E_FAILED}, 1);
    console.Select(u"Groups"_s);
    EXPECT_EQ(console.errorTitle, u"Unable to access groups");
    console.Select({});
    data->Model().CreateGroup(u"ops"_s, {}); // a reason to read them anew
    console.Select(u"Groups"_s);
    EXPECT_EQ(console.Listed(), QStringList{u"ops"_s});
    EXPECT_EQ(messages.errors, QStringList());
}

TEST_F(TreeTest, RefreshTakesWhatTheServerHasNow)
{
    server.data.repositories = {{.name = u"web"_s, .entries = {{u"/old"_s, true}}}, {u"gone"_s}};
    Load();
    console.Expand(kRepositories);
    console.Expand(u"Repositories/web"_s);
    console.Select(u"Repositories/web"_s);
    server.data.repositories[0].entries = {{u"/new"_s, false}};
    server.data.repositories[0].revisions = 8;
    console.Notify(u"Repositories/web"_s, MMC_NOTIFY_TYPE::MMCN_REFRESH);
    EXPECT_EQ(console.Children(u"Repositories/web"_s), QStringList{u"new"_s});
    EXPECT_EQ(console.Text(u"Repositories/web"_s, 1), u"8");

    server.data.repositories.removeLast();
    server.data.repositories.append({u"next"_s});
    console.Select(kRepositories);
    console.Notify(kRepositories, MMC_NOTIFY_TYPE::MMCN_REFRESH);
    EXPECT_EQ(console.Children(kRepositories), (QStringList{u"next"_s, u"web"_s}));
    EXPECT_EQ(console.statusTexts.count(u"Refreshing..."_s), 2);
}

TEST(RootTest, NamesTheComputerThatTheCommandLineNames)
{
    LoadedSnapIn local;
    local.Load();
    EXPECT_EQ(local.console.Text({}, 0), u"Quenvolta Server (Local)");
    EXPECT_EQ(local.console.Text({}, 1), u"Extension Snap-in");
    EXPECT_EQ(local.console.Text({}, 2), u"Configures Quenvolta Server.");

    LoadedSnapIn remote(u"3.3.1"_s, {u"manager"_s, u"/Computer=srv02"_s});
    remote.Load();
    EXPECT_EQ(remote.console.Text({}, 0), u"Quenvolta Server (srv02)");
    EXPECT_EQ(remote.server.CallsOf(Operation::Connect).value(0).path, u"\\\\srv02\\root\\Quenvolta");
    EXPECT_EQ(remote.preferences.servers, QStringList{u"srv02"_s});
    remote.data->Model().SetComputer({}, true);
    EXPECT_EQ(remote.console.Text({}, 0), u"Quenvolta Server (Local)");
    EXPECT_TRUE(remote.console.Contains(kRepositories));
}

TEST_F(TreeTest, AThousandsStrongFolderIsReadOnceAndInOrder)
{
    test::StandInRepository repository{u"big"_s};
    for (int i = 0; i < 20000; ++i)
        repository.entries.insert(u"/entry%1"_s.arg(i), i % 3 == 0);
    server.data.repositories = {repository};
    Load();
    console.Expand(kRepositories);
    server.ClearCalls();
    console.Expand(u"Repositories/big"_s);
    EXPECT_EQ(server.CallsOf(Operation::ExecMethod).size(), 1);
    const QStringList names = console.Children(u"Repositories/big"_s);
    ASSERT_EQ(names.size(), 20000);
    EXPECT_EQ(names.mid(0, 3), (QStringList{u"entry0"_s, u"entry3"_s, u"entry6"_s}));
    EXPECT_EQ(names.last(), u"entry19999");
}

} // namespace quenvolta
