#include "window_test.h"

#include <QAccessible>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenuBar>
#include <QStackedWidget>

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::kRepositories;
using test::StandInRepository;

namespace
{

class WindowKeysTest : public test::WindowTest
{
protected:
    WindowKeysTest()
    {
        server.data.repositories = {
            {.name = u"web"_s,
             .entries = {{u"/trunk"_s, true}, {u"/trunk/lib"_s, true}, {u"/note10"_s, false}, {u"/note9"_s, false}}},
            {.name = u"empty"_s}};
        server.data.users = {u"ann"_s, u"bob"_s};
    }

    /// Writes into the editor that stands in the view.
    void Type(QTreeView& view, const QString& text)
    {
        auto* editor = view.findChild<QLineEdit*>();
        ASSERT_NE(editor, nullptr);
        editor->setText(text);
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
    }
};

} // namespace

TEST_F(WindowKeysTest, TheTreeOpensByKeys)
{
    Open();
    EXPECT_EQ(Current(), u"Quenvolta Server (Local)");
    EXPECT_TRUE(Tree().isExpanded(RootIndex()));
    EXPECT_EQ(window->windowTitle(), u"Quenvolta Server (Local) - Quenvolta Server Manager");
    Press(Tree(), Qt::Key_Down);
    EXPECT_EQ(Current(), kRepositories);
    EXPECT_EQ(Rows(*List().model()), (QStringList{u"empty"_s, u"web"_s}));
    Press(Tree(), Qt::Key_Right);
    EXPECT_TRUE(Tree().isExpanded(Tree().currentIndex()));
    Press(Tree(), Qt::Key_W); // type-ahead
    EXPECT_EQ(Current(), u"Repositories/web");
    Press(Tree(), Qt::Key_Asterisk); // one level, not the whole server
    EXPECT_TRUE(Tree().isExpanded(Tree().currentIndex()));
    EXPECT_EQ(Rows(*List().model()), (QStringList{u"trunk"_s, u"note9"_s, u"note10"_s}));
    EXPECT_EQ(server.CallsOf(u"GetChildren"_s).size(), 1);
    Press(Tree(), Qt::Key_Left);
    EXPECT_FALSE(Tree().isExpanded(Tree().currentIndex()));
    Press(Tree(), Qt::Key_Right);
    EXPECT_EQ(server.CallsOf(u"GetChildren"_s).size(), 1); // read once
    Press(Tree(), Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(Current(), kRepositories);
    Press(Tree(), Qt::Key_Backspace);
    EXPECT_EQ(Current(), u"Quenvolta Server (Local)");
    EXPECT_FALSE(Action("upAction").isEnabled());
}

TEST_F(WindowKeysTest, TheSignsOfTheTreeOpenByMouse)
{
    Open();
    const auto clickSign = [this](const QModelIndex& item) {
        const QRect row = Tree().visualRect(item);
        QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, {row.left() - 10, row.center().y()});
    };
    const QModelIndex repositories = ItemAt({kRepositories});
    EXPECT_TRUE(Tree().model()->hasChildren(repositories));
    clickSign(repositories);
    EXPECT_TRUE(Tree().isExpanded(repositories));
    EXPECT_EQ(Current(), u"Quenvolta Server (Local)"); // opening is not selecting
    const QModelIndex empty = ItemAt({kRepositories, u"empty"_s});
    EXPECT_TRUE(Tree().model()->hasChildren(empty));
    clickSign(empty);
    EXPECT_FALSE(Tree().model()->hasChildren(empty)); // the sign is gone once there was nothing
    clickSign(repositories);
    EXPECT_FALSE(Tree().isExpanded(repositories));
    EXPECT_FALSE(Tree().model()->hasChildren(ItemAt({u"Users"_s})));
}

TEST_F(WindowKeysTest, ItemsOfTheListOpen)
{
    Open();
    Select({kRepositories});
    Press(Tree(), Qt::Key_F6);
    EXPECT_TRUE(List().hasFocus());
    Press(List(), Qt::Key_End);
    Press(List(), Qt::Key_Return);
    EXPECT_EQ(Current(), u"Repositories/web");
    EXPECT_EQ(Description(), u"(https://srv1/svn/web)");
    const QPoint trunk = List().visualRect(List().model()->index(0, 0)).center();
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, trunk);
    QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, trunk);
    EXPECT_EQ(Current(), u"Repositories/web/trunk");
    EXPECT_EQ(Rows(*List().model()), QStringList{u"lib"_s});
    Select({u"Users"_s});
    EXPECT_EQ(Rows(*List().model()), (QStringList{u"ann"_s, u"bob"_s}));
    EXPECT_EQ(Description(), QString());
    Press(Tree(), Qt::Key_F6);
    Press(List(), Qt::Key_Down);
    Press(List(), Qt::Key_Return); // nothing to open, nothing happens
    EXPECT_EQ(Current(), u"Users");
    Press(List(), Qt::Key_F6);
    EXPECT_TRUE(Tree().hasFocus());
}

TEST_F(WindowKeysTest, ANameIsEditedInItsPlace)
{
    Open();
    Select({kRepositories});
    EXPECT_FALSE(Action("renameAction").isEnabled());
    EXPECT_FALSE(Action("deleteAction").isEnabled());
    Select({kRepositories, u"web"_s});
    EXPECT_TRUE(Action("renameAction").isEnabled());
    messages.answer = MessageAnswer::Yes;
    Press(Tree(), Qt::Key_F2);
    Type(Tree(), u"site"_s);
    EXPECT_TRUE(QTest::qWaitFor([this] { return server.data.repositories[0].name == u"site"; }));
    EXPECT_EQ(Current(), u"Repositories/site");
    EXPECT_EQ(Part<ElidingLabel>("itemName").Text(), u"site");
    EXPECT_EQ(Description(), u"(https://srv1/svn/site)");

    Press(Tree(), Qt::Key_F2);
    Type(Tree(), u"no way"_s); // refused by name
    EXPECT_TRUE(QTest::qWaitFor([this] { return messages.texts.size() == 2; }));
    EXPECT_EQ(Current(), u"Repositories/site");

    Select({kRepositories});
    Press(Tree(), Qt::Key_F6);
    Press(List(), Qt::Key_Home);
    ASSERT_EQ(List().currentIndex().data().toString(), u"empty");
    EXPECT_TRUE(Action("renameAction").isEnabled());
    Press(List(), Qt::Key_F2);
    Type(List(), u"filled"_s);
    EXPECT_TRUE(QTest::qWaitFor([this] { return server.data.repositories[1].name == u"filled"; }));
    EXPECT_TRUE(Rows(*List().model()).contains(u"filled"_s));
}

TEST_F(WindowKeysTest, DeleteActsOnThePaneWithTheFocus)
{
    Open();
    messages.answer = MessageAnswer::Yes;
    Select({kRepositories, u"web"_s});
    Press(Tree(), Qt::Key_Delete);
    EXPECT_EQ(Current(), kRepositories);
    EXPECT_EQ(Rows(*List().model()), QStringList{u"empty"_s});

    Select({u"Users"_s});
    EXPECT_FALSE(Action("deleteAction").isEnabled());
    Press(Tree(), Qt::Key_F6);
    Press(List(), Qt::Key_Home);
    EXPECT_TRUE(Action("deleteAction").isEnabled());
    Press(List(), Qt::Key_Delete);
    EXPECT_EQ(server.data.users, QStringList{u"bob"_s});
    EXPECT_EQ(Rows(*List().model()), QStringList{u"bob"_s});
    Tree().setFocus();
    QCoreApplication::processEvents();
    EXPECT_FALSE(Action("deleteAction").isEnabled());
}

TEST_F(WindowKeysTest, EverythingHasAMnemonicAndAName)
{
    Open();
    for (const QMenu* menu : window->menuBar()->findChildren<QMenu*>(Qt::FindDirectChildrenOnly)) {
        QSet<QChar> mnemonics;
        for (const QAction* action : menu->actions()) {
            if (action->isSeparator())
                continue;
            const qsizetype mark = action->text().indexOf(u'&');
            ASSERT_GE(mark, 0) << action->text().toStdString();
            EXPECT_FALSE(mnemonics.contains(action->text()[mark + 1].toLower())) << action->text().toStdString();
            mnemonics.insert(action->text()[mark + 1].toLower());
        }
    }
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible())
            continue;
        const QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
        EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty())
            << widget->metaObject()->className() << ' ' << widget->objectName().toStdString();
    }
}

} // namespace quenvolta
