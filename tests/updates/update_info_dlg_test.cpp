#include "support/qt_printers.h"
#include "updates/update_info_dlg.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

TEST(UpdateInfoDlgTest, ShowsBothVersionsAndOpensThePages)
{
    const UpdateInfo info{.status = UpdateCheckStatus::UpdateAvailable,
                          .version = u"3.4 <b>&amp;"_s,
                          .learnMorePath = u"/more"_s,
                          .downloadPath = u"/get it"_s};
    QList<QByteArray> opened;
    CUpdateInfoDlg dialog(nullptr, info, u"3.3.1"_s, UpdateSite(u"http://updates.example.org"_s),
                          [&](const QUrl& address) { opened.append(address.toEncoded()); });
    dialog.show();
    EXPECT_EQ(dialog.findChild<QLabel*>(u"message"_s)->text(),
              u"An important update to the Quenvolta Server 3.4 <b>&amp; is available.");
    EXPECT_EQ(dialog.findChild<QLabel*>(u"installedVersion"_s)->text(), u"3.3.1");
    EXPECT_EQ(dialog.findChild<QLabel*>(u"availableVersion"_s)->text(), u"3.4 <b>&amp;");

    auto* more = dialog.findChild<QLabel*>(u"moreLink"_s);
    QTest::mouseClick(more, Qt::LeftButton, {}, {20, more->height() / 2});
    EXPECT_EQ(opened, QList<QByteArray>{"http://updates.example.org/more"});
    EXPECT_TRUE(dialog.isVisible());
    QTest::mouseClick(dialog.findChild<QPushButton*>(u"download"_s), Qt::LeftButton);
    EXPECT_EQ(opened.last(), "http://updates.example.org/get%20it");
    EXPECT_FALSE(dialog.isVisible());
}

} // namespace quenvolta
