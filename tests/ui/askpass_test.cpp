#include "support/qt_printers.h"
#include "ui/askpass_dlg.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;
using Kind = AskpassPrompt::Kind;

namespace
{

const QString kHostKeyPrompt =
    u"The authenticity of host 'srv1 (10.0.0.7)' can't be established.\n"
    "ED25519 key fingerprint is SHA256:ab+/Cd12.\nThis key is not known by any other names.\n"
    "Are you sure you want to continue connecting (yes/no/[fingerprint])? "_s;

} // namespace

TEST(AskpassTest, PromptsAreToldApart)
{
    const AskpassPrompt key = ReadAskpassPrompt(kHostKeyPrompt, {});
    EXPECT_EQ(key.kind, Kind::HostKey);
    EXPECT_EQ(key.fingerprint, u"SHA256:ab+/Cd12");
    EXPECT_TRUE(key.text.startsWith(u"The authenticity of host"_s));
    EXPECT_FALSE(key.text.contains(u"yes/no"_s));
    EXPECT_EQ(ReadAskpassPrompt(u"Please type 'yes' or 'no': (yes/no)?"_s, {}).kind, Kind::HostKey);
    EXPECT_EQ(ReadAskpassPrompt(u"root@srv1's password: "_s, {}).kind, Kind::Secret);
    EXPECT_EQ(ReadAskpassPrompt(u"(yes/no) in the middle of a password prompt: "_s, {}).kind, Kind::Secret);
    EXPECT_EQ(ReadAskpassPrompt(u"Allow use of key?"_s, u"confirm"_s).kind, Kind::Confirm);
    EXPECT_EQ(ReadAskpassPrompt(u"Touch your key"_s, u"none"_s).kind, Kind::Notice);
    const AskpassPrompt hostile = ReadAskpassPrompt(u"\x1B[2Ja\u202Eb\a<b>"_s + QString(100'000, u'x'), {});
    EXPECT_FALSE(hostile.text.contains(u'\x1B'));
    EXPECT_FALSE(hostile.text.contains(QChar(0x202E)));
    EXPECT_LE(hostile.text.size(), 2000);
}

TEST(AskpassTest, SecretsAreHiddenAndTrustIsNotTheDefault)
{
    CAskpassDlg secret(ReadAskpassPrompt(u"<b>Password</b>: "_s, {}));
    secret.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&secret));
    auto* field = secret.findChild<QLineEdit*>(u"secret"_s);
    EXPECT_EQ(field->echoMode(), QLineEdit::Password);
    EXPECT_EQ(secret.findChild<QLabel*>(u"prompt"_s)->textFormat(), Qt::PlainText);
    QTest::keyClicks(field, u" secret "_s);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(secret.result(), QDialog::Accepted);
    EXPECT_EQ(secret.Answer(), u" secret "); // blanks belong to it

    CAskpassDlg key(ReadAskpassPrompt(kHostKeyPrompt, {}));
    key.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&key));
    EXPECT_EQ(key.findChild<QLineEdit*>(u"fingerprint"_s)->text(), u"SHA256:ab+/Cd12");
    EXPECT_FALSE(key.findChild<QLineEdit*>(u"secret"_s)->isVisible());
    QTest::keyClick(&key, Qt::Key_Return);
    EXPECT_EQ(key.result(), QDialog::Rejected);
    key.show();
    key.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
    EXPECT_EQ(key.result(), QDialog::Accepted);
    EXPECT_EQ(key.Answer(), u"yes");
}

} // namespace quenvolta
