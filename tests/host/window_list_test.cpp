#include "window_test.h"

#include <QElapsedTimer>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QStatusBar>

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::kRepositories;

namespace
{

class WindowListTest : public test::WindowTest
{
protected:
    QLineEdit& Filter() { return Part<QLineEdit>("filter"); }
    void ClickHeader(int column)
    {
        QHeaderView& header = *List().header();
        const QPoint middle(header.sectionViewportPosition(column) + header.sectionSize(column) / 2,
                            header.height() / 2);
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, middle);
    }
    QString Count() { return window->statusBar()->findChild<QLabel*>()->text(); }
};

} // namespace

TEST_F(WindowListTest, ColumnsSortByNaturalOrderAndBack)
{
    server.data.repositories = {{.name = u"b2"_s, .type = 1, .revisions = 100},
                                {.name = u"b10"_s, .type = 0, .revisions = 9},
                                {.name = u"A1"_s, .type = 2, .revisions = 20}};
    Open();
    Select({kRepositories});
    const QStringList byName{u"A1"_s, u"b2"_s, u"b10"_s};
    EXPECT_EQ(Rows(*List().model()), byName);
    ClickHeader(1);
    EXPECT_EQ(Rows(*List().model()), (QStringList{u"b10"_s, u"A1"_s, u"b2"_s}));
    ClickHeader(1);
    EXPECT_EQ(Rows(*List().model()), (QStringList{u"b2"_s, u"A1"_s, u"b10"_s}));
    ClickHeader(1); // the server's order again
    EXPECT_EQ(Rows(*List().model()), byName);
    ClickHeader(0);
    ClickHeader(0);
    EXPECT_EQ(Rows(*List().model()), (QStringList{u"b10"_s, u"b2"_s, u"A1"_s}));
    Press(Tree(), Qt::Key_F6);
    Press(List(), Qt::Key_Home);
    Press(List(), Qt::Key_Return); // what is opened is what is seen
    EXPECT_EQ(Current(), u"Repositories/b10");
}

TEST_F(WindowListTest, TheFilterShowsWhatHoldsItsText)
{
    server.data.users = {u"Anna"_s, u"bob"_s, u"Hanna"_s, u"zoe"_s};
    Open();
    EXPECT_FALSE(Filter().isVisible()); // no list
    Select({u"Users"_s});
    Press(Tree(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(Filter().hasFocus());
    QTest::keyClicks(&Filter(), u"ANN"_s);
    EXPECT_EQ(Rows(*List().model()), (QStringList{u"Anna"_s, u"Hanna"_s}));
    EXPECT_EQ(Count(), u"Items: 2 of 4");
    Press(Filter(), Qt::Key_Down);
    EXPECT_TRUE(List().hasFocus());
    Press(List(), Qt::Key_End);
    messages.answer = MessageAnswer::Yes;
    Press(List(), Qt::Key_Delete);
    EXPECT_EQ(server.data.users, (QStringList{u"Anna"_s, u"bob"_s, u"zoe"_s}));
    EXPECT_EQ(Rows(*List().model()), QStringList{u"Anna"_s}); // the filter stays
    Filter().setFocus();
    Press(Filter(), Qt::Key_Escape);
    EXPECT_EQ(List().model()->rowCount(), 3);
    QTest::keyClicks(&Filter(), u"x"_s);
    Select({u"Groups"_s});
    Select({u"Users"_s});
    EXPECT_EQ(Filter().text(), QString()); // each list begins anew
    Press(Tree(), Qt::Key_F6);
    Press(List(), Qt::Key_Z); // type-ahead
    EXPECT_EQ(List().currentIndex().data().toString(), u"zoe");
}

TEST_F(WindowListTest, AHundredThousandRowsSortAndFilterInTime)
{
    constexpr int kMany = 100'000;
    for (int i = 0; i < kMany; ++i)
        server.data.users.append(u"user"_s + QString::number(kMany - i));
    Open();
    Select({u"Users"_s});
    ASSERT_EQ(List().model()->rowCount(), kMany);
    QElapsedTimer timer;
    timer.start();
    ClickHeader(0);
    EXPECT_EQ(List().model()->index(9, 0).data().toString(), u"user10");
    Filter().setText(u"9999"_s);
    EXPECT_EQ(List().model()->rowCount(), 19);
    EXPECT_LT(timer.elapsed(), 10'000); // far more than it takes; without keys it is minutes
}

} // namespace quenvolta
