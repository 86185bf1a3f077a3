#include "host/preferences_dlg.h"
#include "snapin/select_computer_dlg.h"
#include "support/dialog_test.h"
#include "support/recorded_messages.h"
#include "support/recorded_shell.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QRadioButton>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

class SelectComputerTest : public test::DialogTest
{
protected:
    void Show()
    {
        dialog = std::make_unique<CSelectComputerDlg>(model, preferences, shell, messages, nullptr);
        Open(*dialog);
    }
    void Type(const QString& text)
    {
        QLineEdit& edit = *Computer().lineEdit();
        edit.selectAll();
        QTest::keyClick(&edit, Qt::Key_Delete);
        QTest::keyClicks(&edit, text);
    }
    QComboBox& Computer() { return Part<QComboBox>(*dialog, "computer"); }

    test::RecordedShell shell;
    test::RecordedMessages messages;
    std::unique_ptr<CSelectComputerDlg> dialog;
};

} // namespace

TEST_F(SelectComputerTest, WithoutRecentServersANameMustBeTyped)
{
    Show();
    EXPECT_TRUE(Part<QRadioButton>(*dialog, "anotherComputer").isChecked());
    EXPECT_EQ(Computer().currentText(), QString());
    EXPECT_TRUE(Computer().hasFocus());
    EXPECT_FALSE(Ok(*dialog).isEnabled());
    Type(u"   "_s);
    EXPECT_FALSE(Ok(*dialog).isEnabled());
    Type(u" srv2 "_s);
    EXPECT_TRUE(Ok(*dialog).isEnabled());
    QTest::keyClick(dialog.get(), Qt::Key_Return);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(model.ComputerName(), u"srv2");
}

TEST_F(SelectComputerTest, RecentServersAreOfferedInTheirOrder)
{
    preferences.servers = {u"newest"_s, u"older"_s};
    Show();
    EXPECT_EQ(Computer().currentText(), u"newest");
    EXPECT_TRUE(Ok(*dialog).isEnabled());
    QTest::keyClick(&Computer(), Qt::Key_Down);
    EXPECT_EQ(Computer().currentText(), u"older");
    EXPECT_EQ(Computer().count(), 2);
    QTest::keyClick(dialog.get(), Qt::Key_L, Qt::AltModifier); // the local computer
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Computer().isEnabled(); }));
    EXPECT_FALSE(Part<QPushButton>(*dialog, "browse").isEnabled());
    EXPECT_TRUE(Ok(*dialog).isEnabled());
    model.SetComputer(u"before"_s, true);
    Click(Ok(*dialog));
    EXPECT_EQ(model.ComputerName(), QString());
}

TEST_F(SelectComputerTest, CancelChangesNothingAndAnUnreachableComputerIsKept)
{
    server.Fail(test::Operation::Connect, {}, {RPC_S_SERVER_UNAVAILABLE}, -1);
    Show();
    Type(u"srv9"_s);
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    EXPECT_EQ(model.ComputerName(), QString());
    Show();
    Type(u"srv9"_s);
    Click(Ok(*dialog));
    EXPECT_EQ(dialog->result(), QDialog::Accepted); // the root shows that it can't be reached
    EXPECT_EQ(model.ComputerName(), u"srv9");
    EXPECT_TRUE(messages.errors.isEmpty());
    Q_EMIT Part<QLabel>(*dialog, "credentials").linkActivated({});
    EXPECT_EQ(shell.asked, QStringList{u"credentials "_s});
}

TEST(PreferencesTest, TheUpdateCheckIsSwitched)
{
    test::MemoryPreferences preferences;
    test::RecordedMessages messages;
    preferences.servers = {u"srv1"_s, u"srv2"_s};
    preferences.qdfsServers = {u"master"_s};
    preferences.updateCheckDisabled = true;
    const auto edit = [&](bool ok) {
        CPreferencesDlg dialog(preferences, messages, nullptr);
        EXPECT_EQ(dialog.findChild<QListWidget*>(u"servers"_s)->item(1)->text(), u"srv2");
        EXPECT_EQ(dialog.findChild<QListWidget*>(u"masters"_s)->count(), 1);
        auto* check = dialog.findChild<QCheckBox*>(u"updateCheck"_s);
        EXPECT_EQ(check->isChecked(), !preferences.updateCheckDisabled);
        check->click();
        ok ? dialog.accept() : dialog.reject();
        return preferences.updateCheckDisabled;
    };
    EXPECT_TRUE(edit(false));
    EXPECT_FALSE(edit(true));
    EXPECT_TRUE(edit(true));
}

} // namespace quenvolta
