#include "support/modal_driver.h"
#include "window_test.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QMenu>
#include <QToolBar>

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::kRepositories;

namespace
{

class WindowCommandsTest : public test::WindowTest
{
protected:
    WindowCommandsTest()
    {
        server.data.repositories = {{.name = u"web"_s, .entries = {{u"/trunk"_s, true}}}, {.name = u"wiki"_s}};
        server.data.users = {u"ann"_s, u"bob"_s, u"cid"_s};
        // Some of the program's dialogs: others are as if they weren't there.
        for (const DialogKind kind : {DialogKind::SelectComputer, DialogKind::ServiceState, DialogKind::CreateUser,
                                      DialogKind::SetPassword, DialogKind::CreateGroup, DialogKind::EditGroup})
            some.Add(kind, [kind](const DialogRequest& r) { return DialogTable::BuiltIn().Open(kind, r); });
        dialogs = &some;
    }

    QMenu& ActionMenu() { return Part<QMenu>("actionMenu"); }
    /// The action menu as a person finds it when it opens: texts, with "> " before those of submenus.
    QStringList MenuTexts()
    {
        Q_EMIT ActionMenu().aboutToShow();
        QStringList texts;
        for (const QAction* action : ActionMenu().actions()) {
            if (!action->isVisible() || action->isSeparator())
                continue;
            texts.append(action->text() + (action->isEnabled() ? u""_s : u" (gray)"_s));
            if (action->menu() != nullptr) {
                for (const QAction* below : action->menu()->actions())
                    texts.append(u"> "_s + below->text());
            }
        }
        return texts;
    }
    QAction* MenuAction(const QString& text)
    {
        for (QAction* action : ActionMenu().actions()) {
            if (action->text() == text)
                return action;
        }
        return nullptr;
    }
    /// The buttons of the toolbar behind the window's own.
    QStringList Buttons()
    {
        QStringList texts;
        for (const QAction* action : Part<QToolBar>("commandBar").actions().mid(1)) {
            if (!action->isSeparator())
                texts.append(action->text() + (action->isEnabled() ? u""_s : u" (gray)"_s));
        }
        return texts;
    }
    void PressButton(const QString& text)
    {
        for (QAction* action : Part<QToolBar>("commandBar").actions()) {
            if (action->text() == text)
                QTest::mouseClick(Part<QToolBar>("commandBar").widgetForAction(action), Qt::LeftButton);
        }
        QCoreApplication::processEvents();
    }
    QStringList Asked() { return std::exchange(shell.asked, {}); }

    DialogTable some;
    const QStringList kFixed{u"Rena&me (gray)"_s, u"&Delete (gray)"_s, u"Re&fresh"_s, u"&Help"_s};
};

} // namespace

TEST_F(WindowCommandsTest, TheActionMenuHasTheCommandsOfTheSelection)
{
    Open();
    EXPECT_EQ(MenuTexts(),
              (QStringList{u"&Connect to another computer..."_s, u"&Start (gray)"_s, u"St&op"_s, u"Restar&t"_s,
                           u"Prope&rties (gray)"_s, u"All Tas&ks"_s, u"> Start Command &Prompt"_s}) +
                  kFixed);
    Select({u"Users"_s});
    EXPECT_EQ(MenuTexts(), (QStringList{u"&Create User..."_s, u"&New"_s, u"> &User..."_s}) + kFixed);
    Press(Tree(), Qt::Key_F6); // the first user
    EXPECT_EQ(MenuTexts(),
              (QStringList{u"Set &Password..."_s, u"Rena&me (gray)"_s, u"&Delete"_s, u"Re&fresh"_s, u"&Help"_s}));
    EXPECT_EQ(MenuAction(u"Set &Password..."_s)->statusTip(), u"Set the user's password.");
    for (const QStringList& item : {QStringList{}, {kRepositories}, {kRepositories, u"web"_s}, {u"Groups"_s}}) {
        Select(item);
        MenuTexts();
        QSet<QChar> mnemonics;
        for (const QAction* action : ActionMenu().actions()) {
            const qsizetype mark = action->text().indexOf(u'&');
            if (!action->isVisible() || mark < 0)
                continue;
            const QChar letter = action->text()[mark + 1].toLower();
            EXPECT_FALSE(mnemonics.contains(letter)) << action->text().toStdString();
            mnemonics.insert(letter);
        }
    }
}

TEST_F(WindowCommandsTest, CommandsRunByMenuKeysAndMouse)
{
    Open();
    Select({kRepositories, u"web"_s});
    Q_EMIT ActionMenu().aboutToShow();
    MenuAction(u"&Copy URL to Clipboard"_s)->trigger();
    QCoreApplication::processEvents();
    EXPECT_EQ(Asked(), QStringList{u"copy https://srv1/svn/web"_s});
    Press(Tree(), Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Asked(), QStringList{u"copy https://srv1/svn/web"_s});
    Press(Tree(), Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(Asked(), QStringList{u"open https://srv1/svn/web"_s});
    Press(Tree(), Qt::Key_F1);
    EXPECT_TRUE(Asked().value(0).endsWith(u"/go/2035/"_s));

    // The context menu of a row by the mouse, and by its key.
    Select({kRepositories});
    const QPoint wiki = List().visualRect(List().model()->index(1, 0)).center();
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, wiki);
    QCoreApplication::processEvents();
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, wiki, List().viewport()->mapToGlobal(wiki));
    QCoreApplication::sendEvent(List().viewport(), &byKey);
    ASSERT_TRUE(ActionMenu().isVisible());
    QTest::keyClick(&ActionMenu(), Qt::Key_C);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !shell.asked.isEmpty(); }));
    EXPECT_EQ(Asked(), QStringList{u"copy https://srv1/svn/wiki"_s});
}

TEST_F(WindowCommandsTest, ToolbarsFollowTheSelectionAndTheServer)
{
    some.Add(DialogKind::ServerProperties, [](const DialogRequest&) { return true; });
    Open();
    EXPECT_EQ(Buttons(),
              (QStringList{u"Properties"_s, u"Start (gray)"_s, u"Stop"_s, u"Restart"_s, u"Start Command Prompt"_s}));
    PressButton(u"Stop"_s);
    EXPECT_EQ(server.CallsOf(u"StopService"_s).size(), 2);
    EXPECT_EQ(Buttons(), (QStringList{u"Properties"_s, u"Start"_s, u"Stop (gray)"_s, u"Restart (gray)"_s,
                                      u"Start Command Prompt"_s}));
    PressButton(u"Start Command Prompt"_s);
    EXPECT_TRUE(Asked().value(0).startsWith(u"prompt"_s));
    Select({kRepositories}); // hidden without server-wide permissions
    EXPECT_EQ(Buttons(), QStringList());
    Select({kRepositories, u"web"_s});
    EXPECT_EQ(Buttons(), QStringList{u"Properties (gray)"_s});
    Select({u"Users"_s});
    EXPECT_EQ(Buttons(), QStringList());
    Select({});
    EXPECT_EQ(Buttons().size(), 5);
}

TEST_F(WindowCommandsTest, ServicesStartAndRestartAtTheServer)
{
    Open();
    Q_EMIT ActionMenu().aboutToShow();
    MenuAction(u"Restar&t"_s)->trigger();
    QCoreApplication::processEvents();
    EXPECT_EQ(server.CallsOf(u"StopService"_s).size(), 2);
    EXPECT_EQ(server.CallsOf(u"StartService"_s).size(), 2);
    EXPECT_EQ(server.data.service[u"ServiceState"_s], Variant{4U});
    server.Fail(test::Operation::ExecMethod, u"StopService"_s, {WBEM_E_ACCESS_DENIED});
    Q_EMIT ActionMenu().aboutToShow();
    MenuAction(u"St&op"_s)->trigger();
    QCoreApplication::processEvents();
    EXPECT_EQ(messages.errors.size(), 1);
}

TEST_F(WindowCommandsTest, SeveralRowsAreDeletedAndCopiedTogether)
{
    Open();
    Select({u"Users"_s});
    Press(Tree(), Qt::Key_F6);
    Press(List(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(MenuTexts(), (QStringList{u"Rena&me (gray)"_s, u"&Delete"_s, u"Re&fresh"_s, u"&Help"_s}));
    Press(List(), Qt::Key_Home);
    Press(List(), Qt::Key_Down, Qt::ShiftModifier);
    messages.answer = MessageAnswer::Yes;
    Press(List(), Qt::Key_Delete);
    EXPECT_EQ(messages.texts, QStringList{u"Are you sure you want to delete 2 users?"_s});
    EXPECT_EQ(server.data.users, QStringList{u"cid"_s});
    EXPECT_EQ(Rows(*List().model()), QStringList{u"cid"_s});

    Select({kRepositories});
    Press(Tree(), Qt::Key_F6);
    Press(List(), Qt::Key_A, Qt::ControlModifier);
    Press(List(), Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Asked(), QStringList{u"copy https://srv1/svn/web\nhttps://srv1/svn/wiki"_s});
    EXPECT_FALSE(Action("deleteAction").isEnabled()); // repositories go one by one
}

TEST_F(WindowCommandsTest, DialogsOpenOverTheWindow)
{
    Open();
    QWidget* over = nullptr;
    const test::ModalDriver driver([&](QWidget& modal) {
        over = modal.parentWidget();
        modal.close();
    });
    Press(Tree(), Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(over, window.get());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

} // namespace quenvolta
