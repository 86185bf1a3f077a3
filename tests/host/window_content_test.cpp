#include "foundation/simple_exception.h"
#include "host/picture.h"
#include "window_test.h"

#include <QApplication>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::kRepositories;
using test::Operation;

namespace
{

class WindowContentTest : public test::WindowTest
{
protected:
    QWidget* Page() { return Part<QStackedWidget>("resultViews").currentWidget(); }
    QString PageText(const char* name) { return Part<QLabel>(name).text(); }
};

} // namespace

TEST_F(WindowContentTest, TheRootShowsTheStatus)
{
    server.data.repositories = {{u"a"_s}, {u"b"_s}};
    server.data.service[u"URL"_s] = u"https://<i>srv</i>/svn/"_s;
    Open();
    EXPECT_EQ(PageText("httpService"), u"running");
    EXPECT_EQ(PageText("qdfsService"), u"running");
    EXPECT_EQ(PageText("repositories"), u"2");
    EXPECT_EQ(PageText("authentication"), u"Subversion (users: 0, groups: 0)");
    EXPECT_EQ(PageText("version"), u"3.3.1");
    EXPECT_EQ(PageText("url"), u"https://<i>srv</i>/svn/");
    EXPECT_EQ(Part<QLabel>("url").textFormat(), Qt::PlainText);
    EXPECT_TRUE(Part<QWidget>("server").isVisible());
    EXPECT_FALSE(Part<QWidget>("failure").isVisible());

    server.data.service[u"ServiceState"_s] = 1U;
    server.data.service[u"AuthType"_s] = 1U;
    server.data.qdfsService = {
        {u"Name"_s, u"qdfssvc"_s}, {u"ServiceState"_s, 1U}, {u"StartMode"_s, 4U}, {u"ExitCode"_s, 0U}};
    Press(Tree(), Qt::Key_F5);
    EXPECT_EQ(PageText("httpService"), u"stopped");
    EXPECT_EQ(PageText("qdfsService"), u"disabled");
    EXPECT_EQ(PageText("authentication"), u"Windows (basic and integrated)");
    EXPECT_EQ(Rows(*Tree().model(), RootIndex()), QStringList{kRepositories});
    EXPECT_TRUE(Tree().isExpanded(RootIndex()));

    server.Fail(Operation::Connect, {}, {RPC_S_SERVER_UNAVAILABLE}, -1);
    Press(Tree(), Qt::Key_F5);
    EXPECT_FALSE(Part<QWidget>("server").isVisible());
    EXPECT_EQ(PageText("failureTitle"), u"The server can't be reached");
    EXPECT_TRUE(Part<QPlainTextEdit>("failureText").toPlainText().contains(u"0x800706BA"_s));
    EXPECT_EQ(PageText("failureAdvice"), u"Please check server name and firewall settings.");
    EXPECT_EQ(Tree().model()->rowCount(RootIndex()), 0);
    server.ClearFailures();
    Press(Tree(), Qt::Key_F5);
    EXPECT_TRUE(Part<QWidget>("server").isVisible());
    EXPECT_TRUE(Tree().isExpanded(RootIndex()));
    EXPECT_EQ(messages.errors, QStringList());
}

TEST_F(WindowContentTest, AnErrorStandsInThePlaceOfTheListUntilItIsMended)
{
    server.data.repositories = {{u"web"_s}};
    Open();
    server.Fail(Operation::EnumerateInstances, u"Quenvolta_Repository"_s,
                {WBEM_E_FAILED, server.ExtendedError(u"<h1>can't</h1> &amp; won't"_s)}, 1);
    Select({kRepositories});
    EXPECT_NE(Page(), &List());
    EXPECT_EQ(PageText("title"), u"Unable to access repositories");
    EXPECT_EQ(Part<QPlainTextEdit>("body").toPlainText(), u"<h1>can't</h1> &amp; won't");
    EXPECT_FALSE(Tree().model()->hasChildren(Tree().currentIndex()));
    Press(Tree(), Qt::Key_F6);
    EXPECT_TRUE(Part<QPlainTextEdit>("body").hasFocus()); // where the text can be copied
    Press(*window->focusWidget(), Qt::Key_F5);
    EXPECT_EQ(Page(), &List());
    EXPECT_EQ(Rows(*List().model()), QStringList{u"web"_s});
    EXPECT_TRUE(Tree().model()->hasChildren(Tree().currentIndex()));
}

TEST_F(WindowContentTest, ARefreshWorksAfterTheConnectionWasLost)
{
    server.data.repositories = {{u"web"_s}};
    Open();
    Select({kRepositories});
    server.DropConnections();
    server.data.repositories.append({u"wiki"_s});
    Press(Tree(), Qt::Key_F5);
    EXPECT_EQ(Rows(*List().model()), (QStringList{u"web"_s, u"wiki"_s}));
    EXPECT_EQ(messages.errors, QStringList());
}

TEST_F(WindowContentTest, WhatItDoesIsSeenWhileItDoesIt)
{
    server.data.repositories = {{u"web"_s}};
    Open();
    Select({kRepositories, u"web"_s});
    QString text;
    bool waits = false;
    server.Handle(u"Quenvolta_Repository"_s, u"GetChildren"_s, [&](test::MethodContext& call) {
        text = window->statusBar()->currentMessage();
        waits = QApplication::overrideCursor() && QApplication::overrideCursor()->shape() == Qt::WaitCursor;
        return call.out->Put(u"Children"_s, QList<WbemObjectPtr>());
    });
    Press(Tree(), Qt::Key_F5);
    EXPECT_EQ(text, u"Refreshing...");
    EXPECT_TRUE(waits);
    EXPECT_EQ(window->statusBar()->currentMessage(), QString());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(WindowContentTest, NamesAreShownAsTheyAre)
{
    const QString markup = u"<b>bold</b>&amp;"_s;
    const QString huge(10000, u'W');
    server.data.repositories = {{.name = markup, .entries = {{u"/"_s + huge, true}, {u"/line\nbreak"_s, false}}}};
    Open();
    Select({kRepositories, markup, huge});
    EXPECT_EQ(Part<ElidingLabel>("itemName").Text().left(20), huge.left(20));
    EXPECT_LT(window->minimumSizeHint().width(), 900);
    EXPECT_FALSE(window->grab().isNull());
    Select({kRepositories, markup});
    EXPECT_EQ(Part<ElidingLabel>("itemName").Text(), markup);
    EXPECT_EQ(Tree().currentIndex().data().toString(), markup);
    const int rowHeight = List().visualRect(List().model()->index(0, 0)).height();
    EXPECT_EQ(List().visualRect(List().model()->index(1, 0)).height(), rowHeight);
}

TEST_F(WindowContentTest, ALargeFolderComesInOnePiece)
{
    test::StandInRepository big{u"big"_s};
    for (int i = 0; i < 20000; ++i)
        big.entries.insert(u"/entry%1"_s.arg(i), true);
    server.data.repositories = {big};
    Open();
    ItemAt({kRepositories, u"big"_s});
    const QSignalSpy inTree(Tree().model(), &QAbstractItemModel::rowsInserted);
    const QSignalSpy inList(List().model(), &QAbstractItemModel::rowsInserted);
    Select({kRepositories, u"big"_s});
    EXPECT_EQ(List().model()->rowCount(), 20000);
    EXPECT_EQ(inTree.size(), 1);
    EXPECT_EQ(inList.size(), 1);
    EXPECT_EQ(server.CallsOf(u"GetChildren"_s).size(), 1);
    Press(Tree(), Qt::Key_F5);
    EXPECT_EQ(inTree.size(), 2);
}

TEST_F(WindowContentTest, TheSelectionFallsBackWhenItsItemGoes)
{
    server.data.repositories = {{.name = u"web"_s, .entries = {{u"/trunk"_s, true}, {u"/trunk/lib"_s, true}}}};
    Open();
    Select({kRepositories, u"web"_s, u"trunk"_s, u"lib"_s});
    server.data.repositories[0].entries.clear();
    Tree().setCurrentIndex(ItemAt({kRepositories, u"web"_s, u"trunk"_s}));
    Press(Tree(), Qt::Key_F5); // the folder itself is gone: it says so in its place
    EXPECT_EQ(PageText("title"), u"Unable to access repository");
    Tree().setCurrentIndex(ItemAt({kRepositories}));
    Press(Tree(), Qt::Key_F5);
    EXPECT_EQ(Current(), kRepositories);
    Select({kRepositories, u"web"_s});
    server.data.service[u"AuthType"_s] = 1U;
    Select({u"Groups"_s});
    Press(Tree(), Qt::Key_Backspace);
    Press(Tree(), Qt::Key_F5);
    EXPECT_EQ(Current(), u"Quenvolta Server (Local)");
}

TEST_F(WindowContentTest, RemembersHowItWasLeft)
{
    server.data.repositories = {{u"web"_s}};
    Open();
    Select({kRepositories});
    QHeaderView& header = *List().header();
    EXPECT_EQ(header.count(), 3);
    EXPECT_EQ(header.sectionSize(0), 200);
    EXPECT_EQ(header.sectionSize(1), 100);
    header.resizeSection(0, 333);
    window->resize(801, 555);
    Part<QSplitter>("panes").setSizes({345, 450});
    QCoreApplication::processEvents();
    const QList<int> panes = Part<QSplitter>("panes").sizes();
    Select({u"Users"_s}); // the columns of another kind of node are their own
    EXPECT_EQ(header.count(), 1);
    Reopen();
    EXPECT_EQ(window->size(), QSize(801, 555));
    EXPECT_EQ(Part<QSplitter>("panes").sizes(), panes);
    Select({kRepositories});
    EXPECT_EQ(List().header()->sectionSize(0), 333);
    EXPECT_EQ(List().header()->sectionSize(1), 100);
}

TEST_F(WindowContentTest, LoadsOnceItIsPainted)
{
    window = std::make_unique<ConsoleWindow>(about, messages, nullptr);
    window->LoadWhenPainted([this] { return CreateSnapIn(); });
    QCoreApplication::processEvents();
    EXPECT_EQ(server.Calls().size(), 0);
    window->show();
    EXPECT_TRUE(QTest::qWaitFor([this] { return Tree().model()->rowCount(RootIndex()) == 3; }));
}

TEST_F(WindowContentTest, APictureShowsTheItemThatIsNamed)
{
    server.data.repositories = {{.name = u"web"_s, .entries = {{u"/trunk"_s, true}}}};
    Open();
    ShowItemAt(*window, {kRepositories, u"web"_s, u"trunk"_s});
    EXPECT_EQ(Current(), u"Repositories/web/trunk");
    EXPECT_THROW(ShowItemAt(*window, {kRepositories, u"nowhere"_s}), SimpleException);
    const QString file = folder.filePath(u"picture.png"_s);
    WritePicture(*window, {640, 480}, file);
    EXPECT_EQ(QImage(file).size(), QSize(640, 480) * window->devicePixelRatio());
    EXPECT_THROW(WritePicture(*window, {640, 480}, u"/nowhere/picture.png"_s), SimpleException);
}

} // namespace quenvolta
