#include "foundation/simple_exception.h"
#include "foundation/wmi_client_exception.h"
#include "support/modal_driver.h"
#include "support/qt_printers.h"
#include "support/recorded_messages.h"
#include "ui/guard.h"
#include "ui/help_site.h"
#include "ui/message_boxes.h"

#include <QAbstractButton>
#include <QDesktopServices>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>
#include <stdexcept>

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::ModalDriver;

namespace
{

QMessageBox& Box(QWidget& modal)
{
    return dynamic_cast<QMessageBox&>(modal);
}

WMIClientException Explained(std::int32_t reason, const QString& details)
{
    return WMIClientException(WBEM_E_FAILED, {}, {u"the description"_s, u"<i>the summary</i>"_s, details, reason});
}

/// Takes the place of the desktop's browser.
class Opener final : public QObject
{
    Q_OBJECT

public:
    Opener() { QDesktopServices::setUrlHandler(u"https"_s, this, "Open"); }
    ~Opener() override { QDesktopServices::unsetUrlHandler(u"https"_s); }

    Q_INVOKABLE void Open(const QUrl& address) { opened.append(address); }

    QList<QUrl> opened;
};

constexpr MessageStyle kQuestion{MessageIcon::Warning, MessageButtons::YesNo};

} // namespace

TEST(MessageBoxTest, QuestionIsAnsweredNoUnlessYesIsChosen)
{
    const auto ask = [](Qt::Key key) {
        const ModalDriver driver([key](QWidget& modal) { QTest::keyClick(&modal, key); });
        return ShowMessage(nullptr, kQuestion, StringId::kAskDeleteUser, u"ann"_s);
    };
    EXPECT_EQ(ask(Qt::Key_Return), MessageAnswer::No);
    EXPECT_EQ(ask(Qt::Key_Escape), MessageAnswer::No);
    const ModalDriver driver([](QWidget& modal) {
        EXPECT_EQ(modal.windowTitle(), u"Quenvolta Server");
        EXPECT_EQ(Box(modal).icon(), QMessageBox::Warning);
        EXPECT_EQ(Box(modal).text(), u"Are you sure you want to delete user 'ann'?");
        QTest::mouseClick(Box(modal).button(QMessageBox::Yes), Qt::LeftButton);
    });
    EXPECT_EQ(ShowMessage(nullptr, kQuestion, StringId::kAskDeleteUser, u"ann"_s), MessageAnswer::Yes);
}

TEST(MessageBoxTest, TextsFromOutsideStayPlainAndFitTheScreen)
{
    const ModalDriver markup([](QWidget& modal) {
        EXPECT_EQ(Box(modal).textFormat(), Qt::PlainText);
        EXPECT_EQ(Box(modal).text(), u"<a href='file:///'>click</a>");
        Box(modal).accept();
    });
    ShowError(nullptr, SimpleException(u"%s", u"<a href='file:///'>click</a>"_s));
    EXPECT_TRUE(markup.seen);

    for (const QString& huge : {QString(100000, u'x'), u"line\n"_s.repeated(5000)}) {
        const ModalDriver driver([&](QWidget& modal) {
            EXPECT_LT(Box(modal).text().size(), 2000);
            EXPECT_LT(Box(modal).text().count(u'\n'), 40);
            EXPECT_EQ(Box(modal).detailedText(), huge);
            Box(modal).accept();
        });
        ShowError(nullptr, SimpleException(u"%s", huge));
    }
}

TEST(GuidanceTest, ReasonsFromOneToFiveAreExplained)
{
    struct Row {
        std::int32_t reason;
        QString hint;
        QString page;
    };
    const Row rows[] = {
        {1, u"Distributed File System Service is started on both"_s, u"/go/2056/"_s},
        {2, u"master server name is correct"_s, u"/go/2057/"_s},
        {3, u"appropriate replication permissions"_s, u"/go/2058/"_s},
        {4, u"Replication Partners local group"_s, u"/go/2059/"_s},
        {5, u"appropriate Quenvolta Server instance"_s, u"/go/2075/"_s},
    };
    qputenv("QUENVOLTA_HELP_SITE", "https://help.test/");
    for (const Row& row : rows) {
        const ModalDriver driver([&](QWidget& modal) {
            EXPECT_EQ(modal.windowTitle(), u"Quenvolta Server");
            EXPECT_EQ(modal.findChild<QLabel*>(u"instruction"_s)->text(), u"<i>the summary</i>");
            EXPECT_EQ(modal.findChild<QLabel*>(u"instruction"_s)->textFormat(), Qt::PlainText);
            const QString content = modal.findChild<QLabel*>(u"content"_s)->text();
            EXPECT_TRUE(content.contains(row.hint)) << content.toStdString();
            EXPECT_TRUE(content.contains(u"\"https://help.test"_s + row.page + u'"')) << content.toStdString();
            EXPECT_FALSE(modal.findChild<QPushButton*>(u"details"_s)->isVisible());
            QTest::keyClick(&modal, Qt::Key_Escape);
        });
        ShowError(nullptr, Explained(row.reason, {}));
        EXPECT_TRUE(driver.seen);
    }
    qunsetenv("QUENVOLTA_HELP_SITE");
}

TEST(GuidanceTest, DetailsUnfoldAndTheLinkIsOpened)
{
    Opener opener;
    const ModalDriver driver([](QWidget& modal) {
        auto* details = modal.findChild<QPushButton*>(u"details"_s);
        auto* information = modal.findChild<QPlainTextEdit*>(u"information"_s);
        EXPECT_FALSE(information->isVisible());
        QTest::mouseClick(details, Qt::LeftButton);
        EXPECT_TRUE(information->isVisible());
        EXPECT_EQ(information->toPlainText(), u"<b>stack</b>\nof the server");
        auto* content = modal.findChild<QLabel*>(u"content"_s);
        content->setFocus();
        QTest::keyClick(content, Qt::Key_Tab); // to the link inside
        QTest::keyClick(content, Qt::Key_Return);
        modal.close();
    });
    ShowError(nullptr, Explained(3, u"<b>stack</b>\nof the server"_s));
    EXPECT_TRUE(driver.seen);
    EXPECT_EQ(opener.opened, QList<QUrl>{HelpUrl(u"/go/2058/"_s)});
}

TEST(GuidanceTest, OtherReasonsShowTheDescription)
{
    for (const std::int32_t reason : {0, 6, -1}) {
        const ModalDriver driver([](QWidget& modal) {
            EXPECT_EQ(Box(modal).text(), u"the description");
            EXPECT_EQ(Box(modal).icon(), QMessageBox::Critical);
            Box(modal).accept();
        });
        ShowError(nullptr, Explained(reason, u"details"_s));
        EXPECT_TRUE(driver.seen);
    }
}

TEST(GuardTest, ShowsWhatEscapesAndLetsNothingPass)
{
    test::RecordedMessages messages;
    EXPECT_TRUE(Guarded(messages, [] {}));
    EXPECT_FALSE(Guarded(messages, [] { throw SimpleException(u"first"); }));
    EXPECT_FALSE(Guarded(messages, [] { throw std::runtime_error("second"); }));
    ASSERT_EQ(messages.errors.size(), 2);
    EXPECT_EQ(messages.errors[0], u"first");
    EXPECT_TRUE(messages.errors[1].endsWith(u"second"_s));
}

} // namespace quenvolta

#include "message_boxes_test.moc"
