#include "accounts/add_permission_dlg.h"
#include "accounts/choose_member_dlg.h"
#include "accounts/group_dlg.h"
#include "accounts/group_reach.h"
#include "accounts/reached_users_dlg.h"
#include "accounts_test.h"

#include <QListView>
#include <QTreeView>

#include <ctime>

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::ModalDriver;

namespace
{

QString UserPath(const QString& name)
{
    return u"Quenvolta_User.Name=\"%1\""_s.arg(name);
}

QString GroupPath(const QString& name)
{
    return u"Quenvolta_Group.Name=\"%1\""_s.arg(name);
}

class GroupsTest : public test::AccountsTest
{
protected:
    GroupsTest()
    {
        server.data.users = {u"zoe"_s, u"Ben"_s, u"ann"_s};
        server.data.groups = {{u"ops"_s, {UserPath(u"zoe"_s), GroupPath(u"dev"_s)}}, {u"dev"_s, {UserPath(u"ann"_s)}}};
    }

    static QAbstractItemView& Members(QWidget& dialog) { return Part<QListView>(dialog, "members"); }
    /// "A&dd...", and the choice of these in the chooser.
    static void Add(QWidget& dialog, const QStringList& accounts)
    {
        const ModalDriver driver([&](QWidget& modal) {
            SelectRows(Part<QTreeView>(modal, "list"), accounts);
            Click(Ok(modal));
        });
        Click(dialog, "add");
        EXPECT_TRUE(driver.seen);
    }
};

TEST_F(GroupsTest, ChoosersListAccountsUnderHeadings)
{
    CChooseMemberDlg member(nullptr, model);
    Open(member);
    auto& list = Part<QTreeView>(member, "list");
    EXPECT_EQ(Rows(list),
              (QStringList{u"Groups"_s, u"  dev"_s, u"  ops"_s, u"Users"_s, u"  ann"_s, u"  Ben"_s, u"  zoe"_s}));
    EXPECT_EQ(list.model()->headerData(0, Qt::Horizontal).toString(), u"Name");
    EXPECT_FALSE(Part<QPushButton>(member, "createUser").isVisible());
    EXPECT_FALSE(Ok(member).isEnabled());
    SelectRows(list, {u"Groups"_s}); // a heading is nothing to choose
    EXPECT_FALSE(Ok(member).isEnabled());
    SelectRows(list, {u"zoe"_s, u"ops"_s, u"Ben"_s});
    EXPECT_TRUE(Ok(member).isEnabled());
    Click(Ok(member));
    EXPECT_EQ(
        member.ChosenAccounts(),
        (QList<Account>{{AccountKind::Group, u"ops"_s}, {AccountKind::User, u"Ben"_s}, {AccountKind::User, u"zoe"_s}}));

    server.data.users.clear();
    server.data.groups.clear();
    CAddPermissionDlg permission(nullptr, model);
    Open(permission);
    auto& special = Part<QTreeView>(permission, "list");
    EXPECT_EQ(Rows(special), (QStringList{u"Special"_s, u"  Everyone"_s, u"Groups"_s, u"Users"_s}));
    EXPECT_EQ(special.model()->headerData(0, Qt::Horizontal).toString(), u"User name");
    const QModelIndex everyone = special.model()->index(0, 0, special.model()->index(0, 0));
    QTest::mouseClick(special.viewport(), Qt::LeftButton, {}, special.visualRect(everyone).center());
    QTest::mouseDClick(special.viewport(), Qt::LeftButton, {}, special.visualRect(everyone).center());
    EXPECT_EQ(permission.result(), QDialog::Accepted);
    EXPECT_EQ(permission.ChosenAccounts(), QList<Account>{{AccountKind::Everyone}});
}

TEST_F(GroupsTest, AChooserCreatesAUserAndSelectsIt)
{
    CAddPermissionDlg dialog(nullptr, model);
    Open(dialog);
    Type(dialog, "filter", u"ann"_s);
    const ModalDriver driver([](QWidget& modal) {
        Type(modal, "userName", u"carl"_s);
        Click(Ok(modal));
    });
    Click(dialog, "createUser");
    EXPECT_TRUE(driver.seen);
    EXPECT_EQ(SelectedRows(Part<QTreeView>(dialog, "list")), QStringList{u"carl"_s});
    EXPECT_TRUE(Ok(dialog).isEnabled());
    EXPECT_EQ(dialog.ChosenAccounts(), (QList<Account>{{AccountKind::User, u"carl"_s}}));

    CAddPermissionDlg without(nullptr, model, CAddPermissionDlg::CreateUserButton::Without);
    Open(without);
    EXPECT_FALSE(Part<QPushButton>(without, "createUser").isVisible());
    server.Fail(test::Operation::EnumerateInstances, u"Quenvolta_Group"_s, {WBEM_E_ACCESS_DENIED});
    EXPECT_THROW(CAddPermissionDlg(nullptr, model), Exception);
}

TEST_F(GroupsTest, FiltersNarrowTheListAndTheSelection)
{
    CAddPermissionDlg dialog(nullptr, model);
    Open(dialog);
    auto& list = Part<QTreeView>(dialog, "list");
    SelectRows(list, {u"zoe"_s});
    Type(dialog, "filter", u"EN"_s);
    EXPECT_EQ(Rows(list), (QStringList{u"Users"_s, u"  Ben"_s}));
    EXPECT_FALSE(Ok(dialog).isEnabled()); // what isn't seen isn't chosen
    QTest::keyClick(&Part<QLineEdit>(dialog, "filter"), Qt::Key_Down);
    EXPECT_TRUE(HasFocus(dialog, "list"));
    EXPECT_EQ(SelectedRows(list), QStringList{u"Ben"_s});
    Type(dialog, "filter", QString());
    EXPECT_EQ(Rows(list).size(), 9);
    EXPECT_TRUE(list.isExpanded(list.model()->index(2, 0)));
}

TEST_F(GroupsTest, AGroupIsCreatedWithItsMembersInTheListsOrder)
{
    CGroupDlg dialog(nullptr, model);
    Open(dialog);
    EXPECT_EQ(dialog.windowTitle(), u"Create New Group");
    EXPECT_FALSE(Ok(dialog).isEnabled());
    EXPECT_FALSE(Part<QPushButton>(dialog, "remove").isEnabled());
    Type(dialog, "groupName", u" new.one "_s);
    EXPECT_TRUE(Ok(dialog).isEnabled());
    Add(dialog, {u"zoe"_s});
    EXPECT_EQ(SelectedRows(Members(dialog)), QStringList{u"zoe"_s});
    EXPECT_TRUE(Part<QPushButton>(dialog, "remove").isEnabled());
    Add(dialog, {u"ops"_s, u"zoe"_s, u"ann"_s});
    EXPECT_EQ(Rows(Members(dialog)), (QStringList{u"zoe"_s, u"ops"_s, u"ann"_s}));
    EXPECT_EQ(SelectedRows(Members(dialog)), (QStringList{u"ann"_s, u"ops"_s, u"zoe"_s}));
    Add(dialog, {u"ann"_s});
    EXPECT_EQ(SelectedRows(Members(dialog)), QStringList{u"ann"_s});
    Click(Ok(dialog));
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    const test::StandInGroup& made = server.data.groups.last();
    EXPECT_EQ(made.name, u"new.one");
    EXPECT_EQ(made.members, (QStringList{UserPath(u"zoe"_s), GroupPath(u"ops"_s), UserPath(u"ann"_s)}));

    CGroupDlg empty(nullptr, model);
    Open(empty);
    Type(empty, "groupName", u"empty"_s);
    Click(Ok(empty));
    EXPECT_EQ(server.data.groups.last().members, QStringList());
}

TEST_F(GroupsTest, RefusedGroupsKeepTheDialogOpen)
{
    constexpr HRESULT kCircular = HResultFromWin32(1059);
    CGroupDlg create(nullptr, model);
    Open(create);
    Type(create, "groupName", u"a b"_s);
    EXPECT_EQ(MessageOf([&] { Click(Ok(create)); }),
              u"Invalid group name. Group name may contain only alpha, numeric, dash, underscore or dot characters.");
    EXPECT_TRUE(HasFocus(create, "groupName"));
    EXPECT_TRUE(server.Calls().isEmpty());
    Type(create, "groupName", u"dev"_s);
    struct Row {
        HRESULT code;
        QString message;
    };
    const auto refuse = [this](CGroupDlg& dialog, const QString& method, const QList<Row>& rows) {
        for (const Row& row : rows) {
            server.Fail(test::Operation::ExecMethod, method, {row.code});
            EXPECT_EQ(MessageOf([&] { Click(Ok(dialog)); }), row.message);
            EXPECT_TRUE(dialog.isVisible());
        }
    };
    refuse(create, u"Create"_s,
           {{WBEM_E_ALREADY_EXISTS, u"Group 'dev' already exists."_s},
            {kCircular, u"Group members have cycles."_s},
            {WBEM_E_ACCESS_DENIED, u"WMI access denied."_s}});

    CGroupDlg edit(nullptr, model, u"ops"_s);
    Open(edit);
    // A member that went is not the group that went.
    server.Fail(test::Operation::ExecMethod, u"SetMembers"_s, {WBEM_E_NOT_FOUND});
    EXPECT_NE(MessageOf([&] { Click(Ok(edit)); }), u"Group 'ops' does not exist.");
    refuse(edit, u"SetMembers"_s, {{kCircular, u"Group members have cycles."_s}});
    server.data.groups.removeFirst();
    EXPECT_EQ(MessageOf([&] { Click(Ok(edit)); }), u"Group 'ops' does not exist.");
    EXPECT_TRUE(edit.isVisible());
    EXPECT_EQ(Rows(Members(edit)), (QStringList{u"zoe"_s, u"dev"_s}));
}

TEST_F(GroupsTest, EditingReadsTheMembersAndSetsThemAgain)
{
    CGroupDlg dialog(nullptr, model, u"ops"_s);
    Open(dialog);
    EXPECT_EQ(dialog.windowTitle(), u"Edit Group");
    EXPECT_TRUE(Part<QLineEdit>(dialog, "groupName").isReadOnly());
    EXPECT_EQ(Part<QLineEdit>(dialog, "groupName").text(), u"ops");
    EXPECT_EQ(Rows(Members(dialog)), (QStringList{u"zoe"_s, u"dev"_s}));
    Click(Ok(dialog));
    EXPECT_EQ(server.CallsOf(u"SetMembers"_s).size(), 1);
    EXPECT_EQ(server.data.groups.first().members, (QStringList{UserPath(u"zoe"_s), GroupPath(u"dev"_s)}));

    CGroupDlg other(nullptr, model, u"ops"_s);
    Open(other);
    Add(other, {u"Ben"_s});
    Type(other, "filter", u"e"_s); // all of them
    SelectRows(Members(other), {u"zoe"_s, u"Ben"_s});
    Click(other, "remove");
    EXPECT_EQ(Rows(Members(other)), QStringList{u"dev"_s});
    EXPECT_FALSE(Part<QPushButton>(other, "remove").isEnabled());
    Click(Button(other, QDialogButtonBox::Cancel));
    EXPECT_EQ(server.CallsOf(u"SetMembers"_s).size(), 1);
}

TEST_F(GroupsTest, ReachedUsersComeWithTheirWay)
{
    const QHash<QString, QList<GroupMember>> groups{
        {u"a"_s, {{GroupMemberKind::Group, u"b"_s}, {GroupMemberKind::User, u"deep"_s}}},
        {u"b"_s,
         {{GroupMemberKind::Group, u"a"_s}, {GroupMemberKind::User, u"Deeper"_s}, {GroupMemberKind::User, u"x"_s}}},
    };
    QStringList asked;
    const QList<ReachedUser> users = FindReachedUsers(
        {{GroupMemberKind::Group, u"a"_s}, {GroupMemberKind::User, u"x"_s}, {GroupMemberKind::Group, u"a"_s}},
        [&](const QString& group) {
            asked.append(group);
            return groups.value(group);
        });
    EXPECT_EQ(users, (QList<ReachedUser>{{u"deep"_s, {u"a"_s}}, {u"Deeper"_s, {u"a"_s, u"b"_s}}, {u"x"_s, {}}}));
    EXPECT_EQ(asked, (QStringList{u"a"_s, u"b"_s}));

    CGroupDlg dialog(nullptr, model, u"ops"_s);
    Open(dialog);
    Add(dialog, {u"Ben"_s}); // also what isn't saved yet
    const ModalDriver driver([](QWidget& modal) {
        EXPECT_EQ(modal.windowTitle(), u"Users Reached by 'ops'");
        const auto& list = Part<QTreeView>(modal, "list");
        EXPECT_EQ(Rows(list), (QStringList{u"ann"_s, u"Ben"_s, u"zoe"_s}));
        EXPECT_EQ(list.model()->index(0, 1).data().toString(), u"dev");
        EXPECT_EQ(list.model()->index(1, 1).data().toString(), u"direct member");
        Type(modal, "filter", u"dev"_s);
        EXPECT_EQ(Rows(list), QStringList{u"ann"_s});
        Click(Button(modal, QDialogButtonBox::Close));
    });
    Click(dialog, "reached");
    EXPECT_TRUE(driver.seen);
}

TEST_F(GroupsTest, FiveThousandAccountsStayQuick)
{
    constexpr int kMany = 5000;
    constexpr int kLongestMs = 1500; // many times what it takes
    QStringList members;
    server.data.users.clear();
    for (int i = 0; i < kMany; ++i) {
        server.data.users.append(u"user%1"_s.arg(i));
        members.append(UserPath(server.data.users.last()));
    }
    server.data.groups.append({u"all"_s, members});
    const std::clock_t begin = std::clock();
    CGroupDlg dialog(nullptr, model, u"all"_s);
    Open(dialog);
    const ModalDriver driver([](QWidget& modal) {
        Part<QTreeView>(modal, "list").selectAll();
        Type(modal, "filter", u"user49"_s);
        EXPECT_EQ(Rows(Part<QTreeView>(modal, "list")).size(), 112); // 111 and a heading
        Type(modal, "filter", QString());
        Part<QTreeView>(modal, "list").selectAll();
        Click(Ok(modal));
    });
    Click(dialog, "add");
    EXPECT_EQ(Members(dialog).selectionModel()->selection().indexes().size(), kMany + 3);
    Click(dialog, "remove");
    EXPECT_EQ(Rows(Members(dialog)), QStringList());
    EXPECT_LT(std::clock() - begin, kLongestMs * CLOCKS_PER_SEC / 1000);
}

} // namespace

} // namespace quenvolta
