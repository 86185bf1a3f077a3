#include "accounts/create_user_dlg.h"
#include "accounts/password_generator.h"
#include "accounts/set_password_dlg.h"
#include "accounts_test.h"

#include <QCheckBox>
#include <QRegularExpression>
#include <QSet>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

const QString kInvalidName =
    u"Invalid user name. User name may contain only alpha, numeric, dash, underscore or dot characters."_s;
const QString kNotConfirmed = u"The password was not correctly confirmed.  Please ensure that the password and "
                              "confirmation match exactly."_s;

class UsersTest : public test::AccountsTest
{
protected:
    static void Fill(QWidget& dialog, const QString& name, const QString& password, const QString& confirmation)
    {
        Type(dialog, "userName", name);
        Type(dialog, "password", password);
        Type(dialog, "confirmation", confirmation);
    }
};

TEST_F(UsersTest, OkNeedsANameAndTheNameMustFollowTheRule)
{
    CCreateUserDlg dialog(nullptr, model);
    Open(dialog);
    EXPECT_EQ(dialog.windowTitle(), u"Create New User");
    EXPECT_TRUE(HasFocus(dialog, "userName"));
    EXPECT_FALSE(Ok(dialog).isEnabled());
    Type(dialog, "userName", u"   "_s);
    EXPECT_FALSE(Ok(dialog).isEnabled());
    for (const QString& name : {u"a b"_s, u"\u00f6"_s, u"a@b"_s, u"a/b"_s, u"<a>"_s, u"a\u0660"_s}) {
        Part<QLineEdit>(dialog, "userName").setText(name);
        EXPECT_EQ(MessageOf([&] { Click(Ok(dialog)); }), kInvalidName) << name.toStdString();
        EXPECT_TRUE(HasFocus(dialog, "userName"));
        EXPECT_EQ(Part<QLineEdit>(dialog, "userName").selectedText(), name);
    }
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(server.Calls().isEmpty());
}

TEST_F(UsersTest, NamesAreTrimmedPasswordsAreNot)
{
    for (const QString& name : {u"  john.doe "_s, u"a-b_c"_s, u".x."_s, u"0"_s}) {
        CCreateUserDlg dialog(nullptr, model);
        Open(dialog);
        Fill(dialog, name, u" pass "_s, u" pass "_s);
        QTest::keyClick(&dialog, Qt::Key_Return);
        EXPECT_EQ(dialog.result(), QDialog::Accepted);
        EXPECT_EQ(dialog.UserName(), name.trimmed());
        const test::RecordedCall call = server.CallsOf(u"Create"_s).last();
        EXPECT_EQ(call.in.value(u"Name"_s), Variant(name.trimmed()));
        EXPECT_EQ(call.in.value(u"Password"_s), Variant(u" pass "_s));
    }
    CCreateUserDlg cancelled(nullptr, model);
    Open(cancelled);
    Fill(cancelled, u"zoe"_s, u"p"_s, u"p"_s);
    Click(Button(cancelled, QDialogButtonBox::Cancel));
    EXPECT_EQ(server.data.users.size(), 4);
}

TEST_F(UsersTest, WhatIsRefusedLeavesTheDialogAsItWas)
{
    server.data.users = {u"ann"_s};
    CCreateUserDlg dialog(nullptr, model);
    Open(dialog);
    Fill(dialog, u"ann"_s, u"Secret"_s, u"secret"_s);
    EXPECT_EQ(MessageOf([&] { Click(Ok(dialog)); }), kNotConfirmed);
    EXPECT_TRUE(HasFocus(dialog, "confirmation"));
    EXPECT_TRUE(server.Calls().isEmpty());

    Type(dialog, "confirmation", u"Secret"_s);
    EXPECT_EQ(MessageOf([&] { Click(Ok(dialog)); }), u"User 'ann' already exists.");
    EXPECT_TRUE(HasFocus(dialog, "userName"));
    server.Fail(test::Operation::ExecMethod, u"Create"_s, {WBEM_E_ACCESS_DENIED});
    Type(dialog, "userName", u"ben"_s);
    EXPECT_EQ(MessageOf([&] { Click(Ok(dialog)); }), u"WMI access denied.");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(Part<QLineEdit>(dialog, "password").text(), u"Secret");
    Click(Ok(dialog));
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(server.data.users, (QStringList{u"ann"_s, u"ben"_s}));
}

TEST_F(UsersTest, PasswordsAreShownAndGenerated)
{
    CCreateUserDlg dialog(nullptr, model);
    Open(dialog);
    auto& password = Part<QLineEdit>(dialog, "password");
    auto& confirmation = Part<QLineEdit>(dialog, "confirmation");
    auto& show = Part<QCheckBox>(dialog, "showPassword");
    EXPECT_EQ(password.echoMode(), QLineEdit::Password);
    Type(dialog, "password", u"typed"_s);
    Click(show);
    EXPECT_EQ(password.echoMode(), QLineEdit::Normal);
    EXPECT_EQ(confirmation.echoMode(), QLineEdit::Normal);
    Click(show);
    EXPECT_EQ(confirmation.echoMode(), QLineEdit::Password);
    Click(dialog, "generate");
    EXPECT_TRUE(show.isChecked());
    EXPECT_NE(password.text(), u"typed");
    EXPECT_EQ(password.text(), confirmation.text());
    EXPECT_EQ(password.selectedText(), password.text()); // to be copied

    QSet<QString> seen;
    for (int i = 0; i < 500; ++i) {
        const QString generated = GeneratePassword();
        EXPECT_EQ(generated.size(), 20);
        EXPECT_TRUE(generated.contains(
            QRegularExpression(u"^(?=.*[a-z])(?=.*[A-Z])(?=.*[2-9])(?=.*[^A-Za-z0-9])[^lIO01o]*$"_s)))
            << generated.toStdString();
        seen.insert(generated);
    }
    EXPECT_EQ(seen.size(), 500);
}

TEST_F(UsersTest, SettingAPasswordComparesAndSetsIt)
{
    CSetPasswordDlg dialog(nullptr, model, u"a&<b>%1"_s);
    Open(dialog);
    EXPECT_EQ(dialog.windowTitle(), u"Set Password for 'a&<b>%1'");
    Type(dialog, "password", u"Aa"_s);
    Type(dialog, "confirmation", u"aa"_s);
    EXPECT_EQ(MessageOf([&] { Click(Ok(dialog)); }), kNotConfirmed);
    EXPECT_TRUE(server.Calls().isEmpty());
    Type(dialog, "confirmation", u"Aa"_s);
    server.Fail(test::Operation::ExecMethod, u"SetPassword"_s, {WBEM_E_ACCESS_DENIED});
    EXPECT_EQ(MessageOf([&] { Click(Ok(dialog)); }), u"WMI access denied.");
    EXPECT_TRUE(dialog.isVisible());

    server.data.users = {u"ann"_s};
    CSetPasswordDlg empty(nullptr, model, u"ann"_s);
    Open(empty);
    Click(Ok(empty));
    EXPECT_EQ(empty.result(), QDialog::Accepted);
    EXPECT_EQ(server.CallsOf(u"SetPassword"_s).last().in.value(u"Password"_s), Variant(QString(u""_s)));
}

TEST_F(UsersTest, DialogsGrowAndDoNotShrink)
{
    CCreateUserDlg dialog(nullptr, model);
    Open(dialog);
    const QSize designed = dialog.size();
    const int fieldWidth = Part<QLineEdit>(dialog, "userName").width();
    dialog.resize(designed / 2);
    EXPECT_EQ(dialog.size(), designed);
    dialog.resize(designed + QSize(100, 80));
    EXPECT_EQ(Part<QLineEdit>(dialog, "userName").width(), fieldWidth + 100);
}

} // namespace

} // namespace quenvolta
