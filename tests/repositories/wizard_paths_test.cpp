#include "opened_addresses.h"
#include "repositories/server_paths.h"
#include "repository_wizard_test.h"

#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QMenu>
#include <QTextBrowser>

namespace quenvolta::test
{

namespace
{

using WizardPathsTest = RepositoryWizardTest;

} // namespace

TEST_F(WizardPathsTest, EachTypeAndRoleHasItsPagesForthAndBack)
{
    const QString type = u"Repository Type"_s;
    const QString role = u"QDFS Replication Role"_s;
    const QString name = u"Repository Name"_s;
    const QString structure = u"Repository Structure"_s;
    const QString permissions = u"Repository Access Permissions"_s;
    const QString replication = u"Repository Replication Permissions"_s;
    const QString settings = u"Master Repository Connection Details"_s;
    const auto walk = [this](const QStringList& titles, const QMap<QString, std::function<void()>>& choices) {
        Start();
        for (const QString& title : titles) {
            EXPECT_EQ(Title(), title);
            if (const auto choose = choices.value(title))
                choose();
            if (title != titles.last())
                GoOn();
        }
        for (qsizetype i = titles.size() - 1; i >= 0; --i) {
            EXPECT_EQ(Title(), titles[i]);
            EXPECT_EQ(CanGoBack(), i > 0);
            GoBack();
        }
    };
    const auto choose = [this](const char* option) { return [this, option] { Choose(option); }; };
    const auto typeName = [this] { TypeInto("name", u"new"_s); };
    walk({type, name, structure, permissions}, {{name, typeName}});
    walk({type, role, name, structure, permissions, replication}, {{type, choose("qdfs")}, {name, typeName}});
    walk({type, role, name, structure, u"Repository Import Options"_s, replication},
         {{type, choose("qdfs")}, {name, typeName}, {structure, [this] {
                                                         Choose("import");
                                                         TypeInto("path", u"/srv/svn/x"_s);
                                                     }}});
    walk(
        {type, role, settings, name},
        {{type, choose("qdfs")}, {role, choose("slave")}, {settings, [this] {
                                                               Part<QComboBox>(Shown(), "server").setEditText(u"hub"_s);
                                                               TypeInto("repository", u"web"_s);
                                                           }}});
    EXPECT_EQ(server.CallsOf(u"Create"_s).size() + server.CallsOf(u"SetSecurity"_s).size(), 0);
}

TEST_F(WizardPathsTest, OnlyWhatTheServerOffersCanBeChosen)
{
    Start();
    EXPECT_TRUE(Part<QWidget>(Shown(), "qdfs").isEnabled());
    EXPECT_FALSE(Part<QWidget>(Shown(), "locksNote").isVisible());
    for (const auto& [version, qdfs, note] : {std::tuple{u"2.8"_s, false, false}, {u"3.2"_s, true, true}}) {
        StandInServer older(version);
        CModel olderModel(older.LocatorFactory(), preferences);
        Wizard on(nullptr, olderModel, preferences);
        Open(on);
        QWizardPage& page = *on.currentPage();
        EXPECT_EQ(Part<QWidget>(page, "qdfs").isEnabled(), qdfs);
        EXPECT_EQ(Part<QWidget>(page, "qdfsText").isEnabled(), qdfs);
        EXPECT_EQ(Part<QWidget>(page, "locksNote").isVisible(), note);
    }
    model.SetComputer(u"build1"_s, false);
    StartMaster(u"new"_s);
    EXPECT_FALSE(Part<QWidget>(Shown(), "import").isEnabled()); // its folder can't be chosen from here
}

TEST_F(WizardPathsTest, NamesAreCheckedWithTheFocusBackInTheField)
{
    Start();
    GoOn();
    EXPECT_FALSE(Next().isEnabled());
    EXPECT_TRUE(FocusIsOn("name"));
    for (const QString& bad : {u".repo"_s, u"repo."_s, u"a b"_s, u"a/b"_s, u"\u20ac"_s}) {
        TypeInto("name", bad);
        EXPECT_TRUE(Next().isEnabled());
        EXPECT_EQ(Refusal(), u"Invalid repository name. Repository name may contain only alpha, numeric, dash, dot or "
                             "underscore characters and cannot start or end by period.");
        EXPECT_TRUE(FocusIsOn("name"));
    }
    EXPECT_EQ(server.Calls().size(), 0);
    TypeInto("name", u"r"_s);
    EXPECT_EQ(Refusal(), u"A repository named 'r' already exists. Please pick another name.");
    EXPECT_TRUE(FocusIsOn("name"));
    server.Fail(Operation::GetObject, {}, {WBEM_E_FAILED, server.ExtendedError(u"No answer."_s)});
    TypeInto("name", u"my.repo"_s);
    EXPECT_EQ(Refusal(), u"No answer.");
    for (const QString& good : {u"my.repo"_s, u"Имя-1_2"_s}) {
        TypeInto("name", good);
        GoOn();
        EXPECT_EQ(Title(), u"Repository Structure");
        GoBack();
    }
}

TEST_F(WizardPathsTest, ImportPathsAndSourcesAreChecked)
{
    StartMaster(u"new"_s);
    EXPECT_FALSE(Part<QWidget>(Shown(), "path").isEnabled());
    EXPECT_TRUE(Next().isEnabled());
    Choose("import");
    EXPECT_FALSE(Next().isEnabled());
    TypeInto("path", u"repos\\x"_s);
    EXPECT_EQ(Refusal(), u"Please enter an absolute or a network path to the repository you would like to import.");
    EXPECT_TRUE(FocusIsOn("path"));
    EXPECT_EQ(MethodCalls(), QStringList());
    server.data.importSourceType = 2;
    TypeInto("path", u"/srv/svn/x"_s);
    EXPECT_EQ(Refusal(), u"Unable to import data from a non-FSFS repository.\r\n\r\nPlease enter a path to the "
                         "repository based on the FSFS storage system.");
    server.Fail(Operation::ExecMethod, u"GetImportSourceType"_s, {E_FAIL, server.ExtendedError(u"Not there."_s)});
    EXPECT_EQ(Refusal(), u"Not there.");
    server.data.importSourceType = 0;
    GoOn();
    EXPECT_EQ(Title(), u"Repository Import Options");
    EXPECT_EQ(Given(u"GetImportSourceType"_s, u"Path"_s).last(), u"/srv/svn/x");
}

TEST(ServerPathsTest, FollowTheSystemThatTheServerRunsOn)
{
    for (const QStringView good : {u"C:/repos/x", u"c:\\x", u"z:/", u"\\\\srv\\share", u"\\\\srv\\s"})
        EXPECT_TRUE(IsAbsoluteOrNetworkPath(good)) << good.toString().toStdString();
    for (const QStringView bad : {u"", u"c:", u"c:x", u"1:/x", u"\\\\?\\C:\\x", u"\\\\.\\x", u"\\\\srv", u"\\\\srv\\",
                                  u"\\\\\\x", u"repos\\x", u"/srv/svn/x", u"\u00e9:/x"})
        EXPECT_FALSE(IsAbsoluteOrNetworkPath(bad)) << bad.toString().toStdString();
    EXPECT_TRUE(IsPathOnServer(u"/srv/svn/x", u"/srv/repositories"));
    EXPECT_FALSE(IsPathOnServer(u"srv/svn/x", u"/srv/repositories"));
    EXPECT_FALSE(IsPathOnServer(u"/srv/svn/x", u"C:\\Repositories"));
    EXPECT_TRUE(IsPathOnServer(u"C:\\x", u"C:\\Repositories"));
}

TEST_F(WizardPathsTest, TheMasterIsTriedRememberedAndNamesTheSlave)
{
    preferences.qdfsServers = {u"old1"_s, u"old2"_s};
    StartSlave();
    auto& masters = Part<QComboBox>(Shown(), "server");
    EXPECT_EQ(masters.itemText(0) + masters.itemText(1), u"old1old2");
    EXPECT_EQ(masters.currentText(), u"");
    EXPECT_FALSE(Next().isEnabled());
    masters.setEditText(u"hub"_s);
    EXPECT_FALSE(Next().isEnabled());
    TypeInto("repository", u"web"_s);
    EXPECT_TRUE(Next().isEnabled());

    server.Fail(Operation::ExecMethod, u"TestQdfsConnection"_s,
                {E_FAIL, server.ExtendedError(u"No master."_s, u"The master doesn't answer."_s, {}, 2)});
    QString advice;
    const ModalDriver driver([&](QWidget& dialog) {
        for (const QLabel* label : dialog.findChildren<QLabel*>())
            advice += label->text();
        dialog.close();
    });
    GoOn();
    EXPECT_TRUE(driver.seen);
    EXPECT_TRUE(advice.contains(u"The master doesn't answer."_s)) << advice.toStdString();
    EXPECT_TRUE(advice.contains(u"/go/2057/"_s));
    EXPECT_EQ(Title(), u"Master Repository Connection Details");
    EXPECT_EQ(preferences.qdfsServers.size(), 2);

    GoOn();
    EXPECT_EQ(preferences.qdfsServers[0], u"hub");
    EXPECT_EQ(masters.currentIndex(), 0);
    EXPECT_EQ(masters.currentText(), u"hub");
    EXPECT_EQ(Part<QLineEdit>(Shown(), "name").text(), u"web");
    GoBack();
    EXPECT_EQ(masters.currentText(), u"hub");
    TypeInto("repository", u"wiki"_s);
    GoOn();
    EXPECT_EQ(Part<QLineEdit>(Shown(), "name").text(), u"wiki"); // nothing was typed there
    Type(Shown(), "name", u"mine"_s);
    GoBack();
    GoOn();
    EXPECT_EQ(Part<QLineEdit>(Shown(), "name").text(), u"mine");
}

TEST_F(WizardPathsTest, HelpIsThatOfThePage)
{
    OpenedAddresses opened;
    StartFsfs(u"new"_s);
    GoBack();
    EXPECT_FALSE(wizard->button(QWizard::HelpButton)->isVisible()); // names have none
    GoOn();
    Click(*wizard->button(QWizard::HelpButton));
    GoOn();
    QTest::keyClick(wizard.get(), Qt::Key_F1);
    GoOn();
    Q_EMIT Part<QLabel>(Shown(), "learnMore").linkActivated(u"help:"_s);
    ASSERT_EQ(opened.taken.size(), 3);
    EXPECT_TRUE(opened.taken[0].endsWith(u"/go/2039/"_s));
    EXPECT_TRUE(opened.taken[1].endsWith(u"/go/2037/"_s));
    EXPECT_TRUE(opened.taken[2].endsWith(u"/go/2038/"_s));
}

TEST_F(WizardPathsTest, TheSummaryLinksTheAddressAndOnlyCloses)
{
    OpenedAddresses opened;
    StartFsfs(u"new"_s);
    GoOn();
    GoOn();
    EXPECT_EQ(Title(), u"Repository Created Successfully");
    auto& summary = Part<QTextBrowser>(Shown(), "summary");
    EXPECT_TRUE(summary.isReadOnly());
    const QString address = u"https://srv1/svn/new"_s;
    ASSERT_TRUE(summary.find(address));
    const QPoint onLink = summary.cursorRect().center() - QPoint(30, 0);
    EXPECT_EQ(summary.anchorAt(onLink), address);
    QTest::mouseClick(summary.viewport(), Qt::LeftButton, {}, onLink);
    EXPECT_EQ(opened.taken, QStringList{address});

    QTimer menu;
    QStringList commands;
    QObject::connect(&menu, &QTimer::timeout, &menu, [&] {
        auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (popup == nullptr)
            return;
        for (const QAction* action : popup->actions())
            commands.append(action->text());
        popup->actions().first()->trigger();
        popup->close();
    });
    menu.start(1);
    QContextMenuEvent click(QContextMenuEvent::Mouse, onLink, summary.viewport()->mapToGlobal(onLink));
    QCoreApplication::sendEvent(summary.viewport(), &click);
    EXPECT_EQ(commands, QStringList{u"&Copy URL"_s});
    EXPECT_EQ(QGuiApplication::clipboard()->text(), address);

    EXPECT_FALSE(CanGoBack());
    EXPECT_EQ(wizard->button(QWizard::FinishButton)->text(), u"&Finish");
    EXPECT_EQ(wizard->button(QWizard::CancelButton)->text(), u"Close");
    Click(*wizard->button(QWizard::CancelButton));
    EXPECT_EQ(wizard->result(), QDialog::Accepted);
}

} // namespace quenvolta::test
