#include "accounts/security_page.h"
#include "snapin/command_id.h"
#include "snapin_test.h"
#include "support/dialog_hands.h"
#include "support/modal_driver.h"

#include <QTreeView>

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::ModalDriver;

namespace
{

/// The commands with the dialogs of the program.
class AccountDialogsTest : public testing::Test, protected test::DialogHands
{
protected:
    void Load(const QString& version = u"3.3.1"_s)
    {
        loaded = std::make_unique<test::LoadedSnapIn>(version);
        test::StandInServer& server = loaded->server;
        server.data.users = {u"ann"_s};
        server.data.groups = {{u"devs"_s}};
        server.data.repositories = {{.name = u"r"_s, .entries = {{u"/d"_s, true}, {u"/f"_s, false}}},
                                    {.name = u"slave"_s, .type = 2}};
        loaded->Load();
        Console().Expand(u"Repositories"_s);
        Console().Expand(u"Repositories/r"_s);
    }
    test::FakeConsole& Console() { return loaded->console; }
    test::StandInServer& Server() { return loaded->server; }

    /// Runs a command that opens a dialog, with what is done in it.
    void RunDialog(const DataObjectPtr& object, int command, const std::function<void(QWidget&)>& actions)
    {
        const ModalDriver driver(actions);
        EXPECT_EQ(loaded->data->Command(command, object), S_OK);
        EXPECT_TRUE(driver.seen);
    }
    /// Opens the permissions by both commands, and gives ann read access.
    void EditPermissions(const QString& path, const QString& title, int imageBefore)
    {
        SCOPED_TRACE(path.toStdString());
        EXPECT_EQ(Console().Item(path).nImage, imageBefore);
        RunDialog(Console().Object(path), CommandId::kProperties, [&](QWidget& sheet) {
            EXPECT_EQ(sheet.windowTitle(), title);
            Click(Button(sheet, QDialogButtonBox::Cancel));
        });
        RunDialog(Console().Object(path), CommandId::kManageSecurity, [](QWidget& sheet) {
            EXPECT_TRUE(QTest::qWaitFor([&] { return Part<CSecurityPage>(sheet, "SecurityPage").isEnabled(); }));
            const ModalDriver chooser([](QWidget& modal) {
                SelectRows(Part<QTreeView>(modal, "list"), {u"ann"_s});
                Click(Ok(modal));
            });
            Click(sheet, "add");
            Click(sheet, "readOnly");
            Click(Ok(sheet));
        });
        EXPECT_EQ(Console().Item(path).nImage, imageBefore + 1);
    }

    std::unique_ptr<test::LoadedSnapIn> loaded;
};

} // namespace

TEST_F(AccountDialogsTest, UsersAndGroupsAreCreatedAndEditedFromTheirMenus)
{
    Load();
    Console().Select(u"Users"_s);
    const int updates = Console().viewUpdates;
    RunDialog(Console().Object(u"Users"_s), CommandId::kCreateUser, [](QWidget& dialog) {
        Type(dialog, "userName", u"ben"_s);
        Click(Ok(dialog));
    });
    EXPECT_EQ(Console().Listed(), (QStringList{u"ann"_s, u"ben"_s}));
    EXPECT_EQ(Console().viewUpdates, updates + 1); // the count of users
    RunDialog(Console().ListedObject(u"ben"_s), CommandId::kSetPassword, [](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"Set Password for 'ben'");
        Click(Ok(dialog));
    });
    EXPECT_EQ(Server().CallsOf(u"SetPassword"_s).size(), 1);

    Console().Select(u"Groups"_s);
    RunDialog(Console().Object(u"Groups"_s), CommandId::kCreateGroup, [](QWidget& dialog) {
        Type(dialog, "groupName", u"ops"_s);
        Click(Ok(dialog));
    });
    EXPECT_EQ(Console().Listed(), (QStringList{u"devs"_s, u"ops"_s}));
    const ModalDriver driver([](QWidget& dialog) {
        EXPECT_EQ(Part<QLineEdit>(dialog, "groupName").text(), u"devs");
        Click(Ok(dialog));
    });
    EXPECT_EQ(Console().NotifyListed(u"devs"_s, MMC_NOTIFY_TYPE::MMCN_DBLCLICK), S_OK);
    EXPECT_TRUE(driver.seen);
    EXPECT_EQ(Server().CallsOf(u"SetMembers"_s).size(), 1);
}

TEST_F(AccountDialogsTest, PermissionsAreEditedFromEveryLevelAndTheIconsFollow)
{
    Load();
    EditPermissions(u"Repositories/r"_s, u"Properties for /svn/r"_s, 4);
    EditPermissions(u"Repositories/r/d"_s, u"Properties for /svn/r/d"_s, 6);
    EditPermissions(u"Repositories/r/f"_s, u"Properties for /svn/r/f"_s, 8);
    EXPECT_EQ(Server().data.permissions.size(), 3);
    Load(u"2.5"_s); // where the whole server's permissions are offered
    EditPermissions(u"Repositories"_s, u"Properties for /svn/"_s, 2);
}

TEST_F(AccountDialogsTest, ASlavesPermissionsAreOnlyShown)
{
    Load();
    RunDialog(Console().Object(u"Repositories/slave"_s), CommandId::kProperties, [](QWidget& sheet) {
        EXPECT_FALSE(Part<QPushButton>(sheet, "add").isVisible());
        Click(Button(sheet, QDialogButtonBox::Cancel));
    });
}

} // namespace quenvolta
