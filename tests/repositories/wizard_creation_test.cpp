#include "repository_wizard_test.h"

#include <QLabel>
#include <QListView>
#include <QTreeView>

#include <unistd.h>

namespace quenvolta::test
{

namespace
{

class WizardCreationTest : public RepositoryWizardTest
{
protected:
    WizardCreationTest()
    {
        server.data.users = {u"anna"_s};
        server.Handle(u"Quenvolta_Directory"_s, u"Search"_s, [this](MethodContext& call) {
            call.out->Put(u"Complete"_s, true);
            return call.out->Put(u"Objects"_s, QList<WbemObjectPtr>{Known(u"S-1-22-1-7"_s, u"berta"_s)});
        });
        server.Handle(u"Quenvolta_Directory"_s, u"Resolve"_s, [this](MethodContext& call) {
            QList<WbemObjectPtr> found;
            for (const QString& sid : call.Texts(u"SIDs"_s))
                found.append(Known(sid, sid == u"S-1-22-1-7"_s ? u"berta"_s : u"me"_s));
            return call.out->Put(u"Objects"_s, found);
        });
    }

    WbemObjectPtr Known(const QString& sid, const QString& name) const
    {
        return server.Make(u"Quenvolta_DirectoryObject"_s, {{u"Kind"_s, u"user"_s},
                                                            {u"Name"_s, name},
                                                            {u"SID"_s, sid},
                                                            {u"DnsHostName"_s, {}},
                                                            {u"Domain"_s, u"SRV1"_s},
                                                            {u"FullName"_s, name}});
    }
    void UseWindowsAuthentication() { server.data.service[u"AuthType"_s] = 1U; }
    static QString Url(const QString& name) { return u"https://srv1/svn/"_s + name; }
    /// The summary has one line break for each of the format's, as the text box shows it.
    static QString AsText(QString summary) { return summary.replace(u"\r\n"_s, u"\n"_s); }
    QString Fsfs(const QString& name, const QString& permissions)
    {
        return AsText(u"Repository Type: FSFS\r\n\r\nRepository Name: %1\r\n\r\nRepository URL: %2\r\n\r\n"
                      "Configured repository permissions:\r\n%3"_s.arg(name, Url(name), permissions));
    }
    /// Picks the one account that the managed computer's directory finds.
    void AddReplicator()
    {
        const ModalDriver driver([](QWidget& picker) {
            Type(picker, "text", u"be"_s);
            auto& found = Part<QTreeView>(picker, "found");
            EXPECT_TRUE(QTest::qWaitFor([&] { return found.model()->rowCount() == 1; }));
            QTest::mouseClick(found.viewport(), Qt::LeftButton, {},
                              found.visualRect(found.model()->index(0, 0)).center());
            Click(picker, "add");
            Click(Ok(picker));
        });
        Choose("add");
        EXPECT_TRUE(driver.seen);
    }
    QStringList Replicators() { return Rows(Part<QListView>(Shown(), "replicators")); }
    const StandInRepository& Made(const QString& name) { return *server.data.FindRepository(name); }
    QList<StandInPermission> PermissionsOf(const QString& name)
    {
        return server.data.permissions.value({name, u"/"_s});
    }
};

} // namespace

TEST_F(WizardCreationTest, ARepositoryOfItsOwnGetsStructureAndPermissions)
{
    StartFsfs(u"new"_s);
    EXPECT_EQ(Next().text(), wizard->buttonText(QWizard::NextButton));
    Choose("singleProject");
    GoOn();
    EXPECT_TRUE(FocusIsOn("explicitAccess"));
    EXPECT_EQ(Part<QRadioButton>(Shown(), "defaultAccess").text(), u"Nobody has &access");
    EXPECT_EQ(Next().text(), u"Cr&eate");
    EXPECT_EQ(MethodCalls(), QStringList());
    GoOn();
    const QString repository = u"Quenvolta_Repository.Name=\"new\"."_s;
    EXPECT_EQ(MethodCalls(), (QStringList{u"Quenvolta_Repository.Create"_s, repository + u"CreateFolders"_s,
                                          repository + u"SetSecurity"_s}));
    EXPECT_EQ(Given(u"CreateFolders"_s, u"Folders"_s), QStringList{u"trunk|branches|tags"_s});
    EXPECT_EQ(Given(u"CreateFolders"_s, u"Message"_s), QStringList{u"Initial structure."_s});
    EXPECT_EQ(PermissionsOf(u"new"_s), (QList<StandInPermission>{{u"Quenvolta_Everyone"_s, u"Everyone"_s, 2}}));
    EXPECT_EQ(Summary(), Fsfs(u"new"_s, u"- Everyone (Read / Write)\r\n"_s));

    StartFsfs(u"plain"_s);
    GoOn();
    Choose("defaultAccess");
    GoOn();
    EXPECT_EQ(server.CallsOf(u"CreateFolders"_s).size(), 0);
    EXPECT_EQ(server.CallsOf(u"SetSecurity"_s).size(), 1); // an empty list is written too
    EXPECT_EQ(Summary(), Fsfs(u"plain"_s, u"- No permissions\r\n"_s));
}

TEST_F(WizardCreationTest, CustomPermissionsStayInTheWizardUntilTheRepositoryIsThere)
{
    StartFsfs(u"new"_s);
    GoOn();
    const auto customize = [this](bool accepted) {
        const ModalDriver driver([&](QWidget& sheet) {
            EXPECT_EQ(sheet.windowTitle(), u"Customize Permissions");
            EXPECT_FALSE(Button(sheet, QDialogButtonBox::Apply).isVisible());
            const ModalDriver chooser([](QWidget& dialog) {
                SelectRows(Part<QAbstractItemView>(dialog, "list"), {u"anna"_s});
                Click(Ok(dialog));
            });
            Click(sheet, "add");
            EXPECT_TRUE(chooser.seen);
            Click(Button(sheet, accepted ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel));
        });
        Choose("custom");
        EXPECT_TRUE(driver.seen);
        return Part<QRadioButton>(Shown(), "customized").isChecked();
    };
    EXPECT_FALSE(customize(false));
    EXPECT_TRUE(customize(true));
    EXPECT_EQ(server.CallsOf(u"SetSecurity"_s).size(), 0);
    GoOn();
    EXPECT_EQ(PermissionsOf(u"new"_s), (QList<StandInPermission>{{u"Quenvolta_User"_s, u"anna"_s, 2}}));
    EXPECT_EQ(Summary(), Fsfs(u"new"_s, u"- anna (Read / Write)\r\n"_s));

    StartFsfs(u"never"_s); // an editor that was never used
    GoOn();
    Choose("customized");
    GoOn();
    EXPECT_EQ(Summary(), Fsfs(u"never"_s, u"- No permissions\r\n"_s));
}

TEST_F(WizardCreationTest, WhereTheServerKnowsThePersonsAccountThatGetsTheAccess)
{
    UseWindowsAuthentication();
    StartFsfs(u"new"_s);
    GoOn();
    QWizardPage& page = Shown();
    EXPECT_EQ(Part<QRadioButton>(page, "defaultAccess").text(), u"No &specific permissions (global permissions apply)");
    EXPECT_EQ(Part<QRadioButton>(page, "explicitAccess").text(),
              u"Explicit Read / &Write access for the current user (SRV1\\me)");
    GoOn();
    const QString sid = u"S-1-22-1-%1"_s.arg(::getuid());
    EXPECT_EQ(PermissionsOf(u"new"_s), (QList<StandInPermission>{{u"Quenvolta_WindowsAccount"_s, sid, 2}}));
    EXPECT_EQ(Summary(), Fsfs(u"new"_s, u"- SRV1\\me (Read / Write)\r\n"_s));

    for (const auto& [computer, known] : {std::pair{u"berta@build1"_s, true}, {u"nobody@build1"_s, false}}) {
        model.SetComputer(computer, false);
        StartFsfs(u"far"_s);
        GoOn();
        auto& option = Part<QRadioButton>(Shown(), "explicitAccess");
        EXPECT_EQ(option.isEnabled(), known);
        EXPECT_EQ(option.isChecked(), known);
        EXPECT_EQ(option.text().contains(u"SRV1\\berta"_s), known);
    }
}

TEST_F(WizardCreationTest, AMasterGetsItsReplicators)
{
    StartMaster(u"hub"_s);
    Choose("singleProject");
    GoOn();
    EXPECT_EQ(Next().text(), wizard->buttonText(QWizard::NextButton));
    GoOn();
    EXPECT_EQ(Next().text(), u"Cr&eate");
    EXPECT_FALSE(Part<QWidget>(Shown(), "remove").isEnabled());
    AddReplicator();
    AddReplicator(); // who is there already
    EXPECT_EQ(Replicators(), QStringList{u"SRV1\\berta"_s});
    Choose("remove");
    EXPECT_EQ(Replicators(), QStringList());
    AddReplicator();
    server.ClearCalls();
    GoOn();
    QStringList methods = MethodCalls();
    methods.removeIf([](const QString& call) { return call.startsWith(u"Quenvolta_Directory"_s); });
    const QString repository = u"Quenvolta_Repository.Name=\"hub\"."_s;
    EXPECT_EQ(methods, (QStringList{u"Quenvolta_Repository.CreateQdfsMaster"_s, repository + u"CreateFolders"_s,
                                    repository + u"SetSecurity"_s, repository + u"SetReplicationSettings"_s}));
    EXPECT_EQ(Made(u"hub"_s).replication, (StandInRole{true, {u"S-1-22-1-7"_s}}));
    const QString format =
        u"Repository Type: QDFS (master)\r\n\r\nRepository Name: %1\r\n\r\nRepository URL: %2\r\n\r\n"
        "Configured repository permissions:\r\n- Everyone (Read / Write)\r\n\r\n"
        "Configured repository replicators:\r\n%3"_s;
    EXPECT_EQ(Summary(), AsText(format.arg(u"hub"_s, Url(u"hub"_s), u"- SRV1\\berta\r\n"_s)));

    StartMaster(u"alone"_s);
    GoOn();
    GoOn();
    GoOn();
    EXPECT_EQ(Summary(), AsText(format.arg(u"alone"_s, Url(u"alone"_s), u"- No replicators\r\n"_s)));
}

TEST_F(WizardCreationTest, AnImportedMasterIsWatchedAndCanBeCancelled)
{
    server.holdAsyncCalls = true;
    server.Handle(u"Quenvolta_Activity"_s, u"Cancel"_s, [this](MethodContext&) {
        server.PendingCalls().last()->Fail({WBEM_E_CALL_CANCELLED, server.ExtendedError(u"It was cancelled."_s)});
        return S_OK;
    });
    StartMaster(u"copy"_s);
    Choose("import");
    TypeInto("path", u"/srv/svn/old"_s);
    GoOn();
    Choose("delegation");
    GoOn();
    QString failure;
    const ModalDriver cancelling([&](QWidget& progress) {
        EXPECT_EQ(progress.windowTitle(), u"Quenvolta Server Manager");
        EXPECT_EQ(Part<QLabel>(progress, "text").text(), u"Creating new repository...");
        EXPECT_EQ(Part<QLabel>(progress, "detail").text(),
                  u"This might take several minutes if you are importing a large repository.");
        Click(progress, "cancel");
        EXPECT_EQ(Part<QLabel>(progress, "text").text(), u"Cancelling repository creation...");
    });
    EXPECT_EQ(Refusal(), u"It was cancelled.");
    EXPECT_TRUE(cancelling.seen);
    EXPECT_EQ(server.data.FindRepository(u"copy"_s), nullptr);

    server.ClearCalls();
    const ModalDriver completing([this](QWidget&) { server.PendingCalls().last()->Complete(); });
    GoOn();
    EXPECT_EQ(MethodCalls(), (QStringList{u"Quenvolta_Repository.ImportQdfsMaster"_s,
                                          u"Quenvolta_Repository.Name=\"copy\".SetReplicationSettings"_s}));
    const QMap<QString, Variant> given = server.CallsOf(u"ImportQdfsMaster"_s).first().in;
    EXPECT_EQ(std::get<QString>(given[u"ImportPath"_s]), u"/srv/svn/old");
    EXPECT_TRUE(std::get<bool>(given[u"ImportPermissions"_s]));
    EXPECT_FALSE(std::get<bool>(given[u"ImportDelegation"_s]));
    EXPECT_TRUE(std::get<bool>(given[u"ImportHooks"_s]));
    EXPECT_EQ(Summary(),
              AsText(u"Repository Type: QDFS (master)\r\n\r\nRepository Name: copy\r\n\r\nRepository URL: %1\r\n\r\n"
                     "Repository data imported from:\r\n/srv/svn/old\r\n\r\n"
                     "Configured repository replicators:\r\n- No replicators\r\n"_s.arg(Url(u"copy"_s))));
}

TEST_F(WizardCreationTest, ASlaveIsCreatedWhenItsNameIsLeft)
{
    StartSlave();
    Part<QComboBox>(Shown(), "server").setEditText(u"hub1"_s);
    TypeInto("repository", u"web"_s);
    GoOn();
    EXPECT_EQ(Next().text(), wizard->buttonText(QWizard::NextButton));
    TypeInto("name", u"r"_s);
    EXPECT_EQ(Refusal(), u"A repository named 'r' already exists. Please pick another name.");
    EXPECT_TRUE(FocusIsOn("name"));
    TypeInto("name", u"far"_s);
    GoOn();
    EXPECT_EQ(MethodCalls(),
              (QStringList{u"Quenvolta_Repository.TestQdfsConnection"_s, u"Quenvolta_Repository.CreateQdfsSlave"_s}));
    EXPECT_EQ(Made(u"far"_s).masterServer + Made(u"far"_s).masterRepository, u"hub1web");
    EXPECT_EQ(Summary(),
              AsText(u"Repository Type: QDFS (slave)\r\n\r\nRepository Name: far\r\n\r\nRepository URL: %1\r\n\r\n"
                     "Master QDFS server: hub1\r\n\r\nMaster QDFS repository: web\r\n"_s.arg(Url(u"far"_s))));
}

TEST_F(WizardCreationTest, WhatWasCreatedBeforeAFailureStaysAndItsNameIsTaken)
{
    StartFsfs(u"new"_s);
    GoOn();
    server.Fail(Operation::ExecMethod, u"Create"_s, {E_FAIL, server.ExtendedError(u"The disk is full."_s)});
    EXPECT_EQ(Refusal(), u"The disk is full.");
    server.Fail(Operation::ExecMethod, u"SetSecurity"_s, {E_FAIL, server.ExtendedError(u"No rules."_s)});
    EXPECT_EQ(Refusal(), u"No rules."); // a creation that left nothing can be repeated
    EXPECT_NE(server.data.FindRepository(u"new"_s), nullptr);
    EXPECT_EQ(Refusal(), u"A repository named 'new' already exists. Please pick another name.");
    EXPECT_TRUE(CanGoBack());
    EXPECT_EQ(server.CallsOf(u"Create"_s).size(), 2);
}

} // namespace quenvolta::test
