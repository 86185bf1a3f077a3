#include "commands_test.h"

#include "foundation/simple_exception.h"

#include <QDir>

namespace quenvolta
{

using namespace Qt::StringLiterals;
using namespace CommandId;

namespace
{

const QString kRoot;
const QString kRepositories = u"Repositories"_s;
const QString kRepository = u"Repositories/web"_s;
const QString kFolder = u"Repositories/web/trunk"_s;
const QString kFile = u"Repositories/web/note"_s;

class CommandsTest : public test::CommandsTest
{
protected:
    void Load(const QString& version, std::optional<std::uint32_t> type = 0)
    {
        test::CommandsTest::Load(version);
        Server().data.repositories = {
            {.name = u"web"_s, .type = type, .entries = {{u"/trunk"_s, true}, {u"/note"_s, false}}}};
        Server().data.users = {u"ann"_s, u"bob"_s};
        Server().data.groups = {{u"ops"_s}};
    }
    void Open()
    {
        test::CommandsTest::Open();
        Console().Expand(kRepositories);
        Console().Expand(kRepository);
    }
    QStringList MenuOfListed(const QString& list, const QString& name)
    {
        Console().Select(list);
        return Menu(Console().ListedObject(name));
    }
    QSet<int> EnabledServiceCommands() { return Enabled(kRoot) & QSet{kStart, kStop, kRestart}; }
    QStringList Asked() { return std::exchange(loaded->shell.asked, {}); }
};

} // namespace

TEST_F(CommandsTest, EveryNodeHasItsMenu)
{
    Load(u"3.3.1"_s, 1);
    Server().data.service[u"AuthType"_s] = 1U; // server-wide permissions
    Open();
    EXPECT_EQ(Menu(kRoot), (QStringList{u"TOP 32808 &Connect to another computer..."_s, u"TOP 32786 &Start (gray)"_s,
                                        u"TOP 32788 St&op"_s, u"TOP 32789 Restar&t"_s, u"TOP 32796 Prope&rties"_s,
                                        u"TASK 32791 Start Command &Prompt"_s}));
    EXPECT_EQ(statusTexts[kStart], u"Starts Quenvolta Server.");
    EXPECT_EQ(statusTexts[kConnect], QString());
    EXPECT_EQ(Menu(kRepositories),
              (QStringList{u"TOP 32770 &Create New Repository..."_s, u"TOP 32793 &Import Existing Repository..."_s,
                           u"TOP 32772 &Browse"_s, u"TOP 32796 &Properties..."_s, u"NEW 32770 &Repository..."_s,
                           u"TASK 32772 &Browse"_s, u"TASK 32773 Manage &Security..."_s,
                           u"TASK 32803 Upgrade Repositories Format..."_s}));
    EXPECT_EQ(Menu(kRepository),
              (QStringList{u"TOP 32771 &Copy URL to Clipboard"_s, u"TOP 32772 &Browse"_s, u"TOP 32796 Prope&rties..."_s,
                           u"NEW 32806 &Folder..."_s, u"NEW 32807 &Project Structure..."_s,
                           u"TASK 32771 &Copy URL to Clipboard"_s, u"TASK 32772 &Browse"_s,
                           u"TASK 32773 Manage &Security..."_s, u"TASK 32805 Manage &Hooks..."_s,
                           u"TASK 32811 Manage &Delegation..."_s, u"TASK 32813 Convert Back to &FSFS Format..."_s,
                           u"TASK 32815 Export &Replication Seed..."_s}));
    const QStringList entry{
        u"TOP 32771 &Copy URL to Clipboard"_s,  u"TOP 32772 &Browse"_s,  u"TOP 32796 Prope&rties..."_s,
        u"TASK 32771 &Copy URL to Clipboard"_s, u"TASK 32772 &Browse"_s, u"TASK 32773 Manage &Security..."_s};
    EXPECT_EQ(Menu(kFile), entry);
    const QStringList newItems{u"NEW 32806 &Folder..."_s, u"NEW 32807 &Project Structure..."_s};
    EXPECT_EQ(Menu(kFolder), entry.mid(0, 3) + newItems + entry.mid(3));
    EXPECT_EQ(Menu(Console().Object(kRepository), CCM_INSERTIONALLOWED_NEW), newItems);
    EXPECT_EQ(Menu(Console().Object(kRoot), CCM_INSERTIONALLOWED_VIEW), QStringList());
}

TEST_F(CommandsTest, AccountsHaveTheirMenus)
{
    Load(u"3.3.1"_s);
    Open();
    EXPECT_EQ(Menu(u"Users"_s), (QStringList{u"TOP 32774 &Create User..."_s, u"NEW 32774 &User..."_s}));
    EXPECT_EQ(MenuOfListed(u"Users"_s, u"ann"_s), QStringList{u"TOP 32775 Set &Password..."_s});
    EXPECT_EQ(Menu(u"Groups"_s), (QStringList{u"TOP 32787 &Create Group..."_s, u"NEW 32787 &Group..."_s}));
    EXPECT_EQ(MenuOfListed(u"Groups"_s, u"ops"_s), QStringList{u"TOP 32790 &Edit..."_s});
    EXPECT_FALSE(Menu(kRepositories).contains(u"TASK 32773 Manage &Security..."_s)); // no server-wide permissions
}

TEST_F(CommandsTest, ServiceCommandsFollowTheStatesOfTheServices)
{
    struct Case {
        QString version;
        std::uint32_t http;
        std::uint32_t qdfs;
        std::uint32_t startMode;
        QSet<int> enabled;
    };
    const QSet both{kStop, kRestart};
    const QList<Case> cases{
        {u"2.8"_s, 4, 1, 2, both},       // QDFS doesn't count before 3.0
        {u"2.8"_s, 1, 4, 2, {kStart}},   // neither does it when it runs
        {u"3.3.1"_s, 1, 1, 2, {kStart}}, // both stopped
        {u"3.3.1"_s, 4, 4, 2, both},     // both running
        {u"3.3.1"_s, 4, 1, 2, both | QSet{kStart}},
        {u"3.3.1"_s, 4, 1, 4, both},                // disabled: can't start
        {u"3.3.1"_s, 2, 2, 2, both},                // start pending: can stop, can't start
        {u"3.3.1"_s, 3, 3, 2, {kStart}},            // stop pending: can start, can't stop
        {u"3.3.1"_s, 7, 1, 4, both | QSet{kStart}}, // paused
    };
    for (const Case& each : cases) {
        Load(each.version);
        Server().data.service[u"ServiceState"_s] = each.http;
        Server().data.qdfsService[u"ServiceState"_s] = each.qdfs;
        Server().data.qdfsService[u"StartMode"_s] = each.startMode;
        Open();
        EXPECT_EQ(EnabledServiceCommands(), each.enabled)
            << each.version.toStdString() << ' ' << each.http << ' ' << each.qdfs << ' ' << each.startMode;
    }
    Load(u"3.3.1"_s);
    Server().Fail(test::Operation::Connect, {}, {E_ACCESSDENIED});
    test::CommandsTest::Open();
    EXPECT_EQ(Enabled(kRoot), (QSet{kConnect, kCommandPrompt}));
}

TEST_F(CommandsTest, ServicesAreRunInTheirOrderAndTheStatusIsReadAnew)
{
    using enum ServiceAction;
    using enum ServerService;
    Load(u"3.3.1"_s);
    Open();
    Console().Select(kRoot);
    duringDialog = [this](const DialogRequest&) { Server().data.service[u"ServiceState"_s] = 1U; };
    EXPECT_EQ(Run(kRoot, kRestart), S_OK);
    EXPECT_EQ(operations, (QList<ServiceOperation>{{Stop, Http}, {Stop, Qdfs}, {Start, Qdfs}, {Start, Http}}));
    EXPECT_TRUE(EnabledServiceCommands().contains(kStart)); // as the server is now
    duringDialog = [this](const DialogRequest&) {
        Server().data.qdfsService[u"ServiceState"_s] = 1U;
        throw SimpleException(u"no");
    };
    Run(kRoot, kStop);
    EXPECT_EQ(operations, (QList<ServiceOperation>{{Stop, Qdfs}}));
    EXPECT_EQ(loaded->messages.errors, QStringList{u"no"_s});
    EXPECT_EQ(EnabledServiceCommands(), QSet{kStart}); // read anew after a failure, too
    duringDialog = {};
    Run(kRoot, kStart);
    EXPECT_EQ(operations, (QList<ServiceOperation>{{Start, Http}, {Start, Qdfs}}));
    opened.clear();
    EXPECT_EQ(Run(kRoot, kStop), S_FALSE); // disabled commands don't run, whoever asks
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(CommandsTest, RepositoryCommandsFollowVersionAndType)
{
    const QSet rules{kManageDelegation, kConvertToQdfs, kConvertToFsfs, kConsistencyCheck, kExportReplicationSeed};
    struct Case {
        QString version;
        std::optional<std::uint32_t> type;
        QSet<int> offered;
    };
    const QList<Case> cases{
        {u"2.6"_s, 0, {}},
        {u"2.7"_s, 0, {kManageDelegation}},
        {u"3.0"_s, 0, {kManageDelegation, kConvertToQdfs}},
        {u"3.0"_s, 1, {kManageDelegation, kConvertToFsfs}},
        {u"3.2"_s, 1, {kManageDelegation, kConvertToFsfs, kExportReplicationSeed}},
        {u"3.3.1"_s, 2, {kManageDelegation, kConsistencyCheck}},
        {u"3.3.1"_s, {}, {kManageDelegation}}, // the type can't be told
    };
    for (const Case& each : cases) {
        Load(each.version, each.type);
        Open();
        EXPECT_EQ(Enabled(kRepository) & rules, each.offered) << each.version.toStdString();
        EXPECT_TRUE(Enabled(kRepository).contains(kManageHooks));
    }
}

TEST_F(CommandsTest, ServerWidePermissionsDependOnVersionAndAuthentication)
{
    for (const auto& [version, windows, available] :
         {std::tuple{u"2.5"_s, 0U, true}, {u"2.6"_s, 1U, false}, {u"2.7"_s, 0U, false}, {u"2.7"_s, 1U, true}}) {
        Load(version);
        Server().data.service[u"AuthType"_s] = windows;
        Open();
        EXPECT_EQ(Enabled(kRepositories).contains(kManageSecurity), available) << version.toStdString() << windows;
    }
}

TEST_F(CommandsTest, CommandsOpenTheirDialogs)
{
    Load(u"3.3.1"_s, 1);
    Server().data.service[u"AuthType"_s] = 1U;
    Open();
    const auto expect = [&](const QString& path, int command, DialogKind kind, int atPage = 0) {
        opened.clear();
        EXPECT_EQ(Run(path, command), S_OK) << command;
        EXPECT_EQ(opened, QList{kind}) << command;
        EXPECT_EQ(page, atPage) << command;
    };
    expect(kRoot, kConnect, DialogKind::SelectComputer);
    expect(kRoot, kProperties, DialogKind::ServerProperties);
    expect(kRepositories, kCreateRepository, DialogKind::CreateRepository);
    expect(kRepositories, kImportRepository, DialogKind::ImportRepository);
    expect(kRepositories, kUpgradeRepositories, DialogKind::UpgradeRepositories);
    expect(kRepositories, kProperties, DialogKind::GlobalPermissions);
    expect(kRepositories, kManageSecurity, DialogKind::GlobalPermissions);
    EXPECT_EQ(position, (TreePosition{QString(), u"/"_s}));
    expect(kRepository, kManageHooks, DialogKind::RepositoryHooks, 1);
    expect(kRepository, kManageDelegation, DialogKind::RepositoryDelegation, 2);
    expect(kRepository, kConvertToFsfs, DialogKind::ConvertToFsfs);
    expect(kRepository, kExportReplicationSeed, DialogKind::ExportReplicationSeed);
    EXPECT_EQ(position, (TreePosition{u"web"_s, u"/"_s}));
    expect(kFile, kManageSecurity, DialogKind::RepositoryProperties);
    EXPECT_EQ(position, (TreePosition{u"web"_s, u"/note"_s}));
    EXPECT_EQ(Run(kFolder, kManageHooks), S_OK); // a repository's alone
    EXPECT_EQ(opened, QList{DialogKind::RepositoryProperties});
    EXPECT_EQ(Run(kFolder, 4711), S_FALSE);
}

TEST_F(CommandsTest, AccountCommandsOpenTheirDialogs)
{
    Load(u"3.3.1"_s);
    Open();
    Run(u"Users"_s, kCreateUser);
    Run(u"Groups"_s, kCreateGroup);
    Console().Select(u"Users"_s);
    loaded->data->Command(kSetPassword, Console().ListedObject(u"bob"_s));
    EXPECT_EQ(account, u"bob");
    Console().Select(u"Groups"_s);
    Console().NotifyListed(u"ops"_s, MMC_NOTIFY_TYPE::MMCN_DBLCLICK);
    EXPECT_EQ(account, u"ops");
    EXPECT_EQ(opened,
              (QList{DialogKind::CreateUser, DialogKind::CreateGroup, DialogKind::SetPassword, DialogKind::EditGroup}));
}

TEST_F(CommandsTest, NewFoldersAreShownAndDeletedOnesGo)
{
    Load(u"3.3.1"_s);
    Open();
    duringDialog = [this](const DialogRequest&) { Server().data.repositories[0].entries[u"/branches"_s] = true; };
    dialogAnswer = false;
    Run(kRepository, kCreateFolder);
    EXPECT_FALSE(Console().Contains(u"Repositories/web/branches"_s)); // cancelled: nothing is read
    dialogAnswer = true;
    const int updates = Console().viewUpdates;
    Run(kRepository, kCreateFolder);
    EXPECT_TRUE(Console().Contains(u"Repositories/web/branches"_s));
    EXPECT_EQ(Console().viewUpdates, updates + 1);
    EXPECT_EQ(Console().selected, kRepository);
    duringDialog = {};
    Console().Select(kFolder);
    EXPECT_TRUE(Console().verbs.contains(MMC_CONSOLE_VERB::MMC_VERB_DELETE));
    EXPECT_EQ(Console().Notify(kFolder, MMC_NOTIFY_TYPE::MMCN_DELETE), S_OK);
    EXPECT_EQ(opened.last(), DialogKind::DeleteFolder);
    EXPECT_FALSE(Console().Contains(kFolder));
    Console().Select(kFile);
    EXPECT_FALSE(Console().verbs.contains(MMC_CONSOLE_VERB::MMC_VERB_DELETE));
}

TEST_F(CommandsTest, CommandsWithoutTheirDialogAreDisabled)
{
    Load(u"3.3.1"_s, 2);
    const DialogTable none;
    loaded->dialogs = &none;
    Open();
    EXPECT_EQ(Enabled(kRoot), QSet{kCommandPrompt});
    EXPECT_EQ(Enabled(kRepositories), QSet{kBrowse});
    EXPECT_EQ(Enabled(kRepository), (QSet{kBrowse, kCopyUrl}));
    EXPECT_EQ(Run(kRepository, kConsistencyCheck), S_FALSE);
    Console().Select(kFolder);
    EXPECT_FALSE(Console().verbs.contains(MMC_CONSOLE_VERB::MMC_VERB_DELETE));
}

TEST_F(CommandsTest, OldServersImportNothing)
{
    Load(u"2.8"_s);
    const DialogTable none;
    loaded->dialogs = &none;
    Open();
    EXPECT_EQ(Run(kRepositories, kImportRepository), S_OK);
    EXPECT_TRUE(opened.isEmpty());
    EXPECT_EQ(loaded->messages.lastStyle.icon, MessageIcon::Error);
    EXPECT_TRUE(loaded->messages.texts.last().contains(u"3.0"_s));
}

TEST_F(CommandsTest, AddressesAreUsedOnceSomebodyCanSignIn)
{
    Load(u"3.3.1"_s);
    Open();
    Run(kRepositories, kBrowse);
    Run(kFolder, kBrowse);
    Run(kFolder, kCopyUrl);
    EXPECT_EQ(Asked(), (QStringList{u"open https://srv1/svn/"_s, u"open https://srv1/svn/web/trunk"_s,
                                    u"copy https://srv1/svn/web/trunk"_s}));
    EXPECT_TRUE(loaded->messages.texts.isEmpty());

    Server().data.users.clear();
    Run(kRepository, kCopyUrl); // cancelled
    EXPECT_EQ(Asked(), QStringList());
    const QList<TaskButton>& buttons = loaded->messages.lastButtons;
    ASSERT_EQ(buttons.size(), 2);
    EXPECT_EQ(buttons[0].text, u"Create &User");
    EXPECT_EQ(buttons[1].text, u"&Continue");
    loaded->messages.chosenButton = buttons[0].id;
    Run(kRepository, kBrowse);
    EXPECT_EQ(opened, QList{DialogKind::CreateUser});
    EXPECT_EQ(Asked(), QStringList());
    loaded->messages.chosenButton = buttons[1].id;
    Run(kRepository, kCopyUrl);
    EXPECT_EQ(Asked(), QStringList{u"copy https://srv1/svn/web"_s});

    loaded->messages.texts.clear();
    Server().data.service[u"AuthType"_s] = 1U;
    Run(kRepository, kBrowse);
    EXPECT_TRUE(loaded->messages.texts.isEmpty());
}

TEST_F(CommandsTest, TheCommandPromptOpensWhereTheServerIs)
{
    Load(u"3.3.1"_s);
    Server().data.service[u"RepositoriesRoot"_s] = u"/srv/repositories"_s;
    Open();
    Run(kRoot, kCommandPrompt);
    EXPECT_EQ(Asked(), QStringList{u"prompt /srv/repositories"_s});
    loaded->data->Model().SetComputer(u"srv2"_s, true);
    Run(kRoot, kCommandPrompt);
    EXPECT_EQ(Asked(), QStringList{u"prompt "_s + QDir::homePath()});
}

TEST_F(CommandsTest, SeveralItemsOfferWhatMakesSenseForAll)
{
    Load(u"3.3.1"_s);
    Open();
    const DataObjectPtr entries = Console().SeveralObject({kFolder, kFile});
    EXPECT_EQ(Menu(entries), QStringList{u"TOP 32771 &Copy URLs to Clipboard"_s});
    loaded->data->Command(kCopyUrl, entries);
    EXPECT_EQ(Asked(), QStringList{u"copy https://srv1/svn/web/trunk\nhttps://srv1/svn/web/note"_s});
    EXPECT_EQ(Menu(Console().SeveralObject({kFolder, u"Users"_s})), QStringList());
    QByteArray several;
    EXPECT_EQ(entries->GetData(u"CCF_MMC_MULTISELECT_DATAOBJECT"_s, &several), S_OK);
    EXPECT_EQ(Console().Object(kFolder)->GetData(u"CCF_MMC_MULTISELECT_DATAOBJECT"_s, &several), DV_E_FORMATETC);

    Console().Select(u"Users"_s);
    const DataObjectPtr users = Console().SeveralListedObject({u"ann"_s, u"bob"_s});
    Console().verbs.clear();
    Console().Component().Notify(users, {.type = MMC_NOTIFY_TYPE::MMCN_SELECT, .on = true});
    EXPECT_EQ(Console().verbs, QSet{MMC_CONSOLE_VERB::MMC_VERB_DELETE});
    const MMCNotification remove{.type = MMC_NOTIFY_TYPE::MMCN_DELETE};
    EXPECT_EQ(Console().Component().Notify(users, remove), S_FALSE);
    EXPECT_EQ(loaded->messages.texts, QStringList{u"Are you sure you want to delete 2 users?"_s});
    loaded->messages.answer = MessageAnswer::Yes;
    Server().ClearCalls();
    EXPECT_EQ(Console().Component().Notify(users, remove), S_OK);
    EXPECT_EQ(Server().data.users, QStringList());
    EXPECT_EQ(Console().Listed(), QStringList());
    EXPECT_EQ(Server().CallsOf(test::Operation::EnumerateInstances).size(), 0) << "the list is read anew for each";
}

} // namespace quenvolta
