#include "../provider/permission_cases.h"
#include "accounts/create_user_dlg.h"
#include "accounts/group_dlg.h"
#include "accounts/group_reach.h"
#include "accounts/model_security_page_host.h"
#include "accounts/security_page.h"
#include "accounts/set_password_dlg.h"
#include "accounts/user_group_picker_dlg.h"
#include "foundation/exception.h"
#include "real_model.h"
#include "support/dialog_hands.h"
#include "support/modal_driver.h"
#include "support/port_holder.h"
#include "ui/property_sheet.h"

#include <QRegularExpression>
#include <QTreeView>
#include <QUrl>

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

namespace quenvolta::test
{

using namespace Qt::StringLiterals;
namespace cases = permissioncases;

namespace
{

// What the options are called, by the level.
constexpr std::array kOptions{"noAccess", "readOnly", "readWrite"};
// Without it, an @ in a name would begin a revision.
const QString kNoPeg = u"@"_s;
const QStringList kLevels{u"No Access"_s, u"Read Only"_s, u"Read / Write"_s};

/// An administrator at the dialogs of a true server, and stock clients of its web service.
class RealAccountsTest : public ::testing::Test, protected DialogHands
{
protected:
    void SetUp() override
    {
        model.SetServerName(u"localhost"_s);
        model.SetNetworkOptions(false, PortHolder::Free(), QStringList{u"127.0.0.1"_s});
        model.StartHttpService();
    }
    void TearDown() override
    {
        try {
            model.StopHttpService();
        } catch (const Exception& failure) {
            ADD_FAILURE() << failure.GetMessage().toStdString();
        }
    }

    void CreateUser(const QString& name, const QString& password)
    {
        CCreateUserDlg dialog(nullptr, model);
        Open(dialog);
        Type(dialog, "userName", name);
        Type(dialog, "password", password);
        Type(dialog, "confirmation", password);
        Click(Ok(dialog));
        ASSERT_EQ(dialog.result(), QDialog::Accepted) << name.toStdString();
    }
    void SetPassword(const QString& name, const QString& password)
    {
        CSetPasswordDlg dialog(nullptr, model, name);
        Open(dialog);
        Type(dialog, "password", password);
        Type(dialog, "confirmation", password);
        Click(Ok(dialog));
        ASSERT_EQ(dialog.result(), QDialog::Accepted);
    }
    /// Chooses an account below a heading of a chooser.
    static void Choose(QWidget& chooser, const QString& heading, const QString& name)
    {
        auto& list = Part<QTreeView>(chooser, "list");
        for (int section = 0; section < list.model()->rowCount(); ++section) {
            const QModelIndex parent = list.model()->index(section, 0);
            for (int row = 0; parent.data() == heading && row < list.model()->rowCount(parent); ++row) {
                const QModelIndex index = list.model()->index(row, 0, parent);
                if (index.data().toString() == name)
                    list.selectionModel()->select(index, QItemSelectionModel::Select);
            }
        }
    }
    void CreateGroup(const QString& name, const QStringList& users, const QStringList& groups)
    {
        CGroupDlg dialog(nullptr, model);
        Open(dialog);
        Type(dialog, "groupName", name);
        if (!users.isEmpty() || !groups.isEmpty()) {
            const ModalDriver driver([&](QWidget& chooser) {
                for (const QString& user : users)
                    Choose(chooser, u"Users"_s, user);
                for (const QString& group : groups)
                    Choose(chooser, u"Groups"_s, group);
                Click(Ok(chooser));
            });
            Click(dialog, "add");
        }
        Click(Ok(dialog));
        ASSERT_EQ(dialog.result(), QDialog::Accepted) << name.toStdString();
    }

    /// The property sheet of a place.
    std::unique_ptr<CPropertySheet> OpenSheet(const TreePosition& place)
    {
        auto sheet = std::make_unique<CPropertySheet>(nullptr, u"Properties"_s);
        sheet->AddPage(std::make_unique<CSecurityPage>(std::make_unique<CModelSecurityPageHost>(model, place)));
        Open(*sheet);
        QCoreApplication::processEvents();
        EXPECT_TRUE(Part<CSecurityPage>(*sheet, "SecurityPage").isEnabled());
        return sheet;
    }
    /// Adds an account of the chooser with a level.
    void Grant(CPropertySheet& sheet, const QString& heading, const QString& name, int level)
    {
        const ModalDriver driver([&](QWidget& chooser) {
            Choose(chooser, heading, name);
            Click(Ok(chooser));
        });
        Click(sheet, "add");
        EXPECT_TRUE(driver.seen);
        Click(sheet, kOptions[static_cast<std::size_t>(level)]);
    }
    void Grant(const TreePosition& place, const QString& heading, const QString& name, int level)
    {
        const auto sheet = OpenSheet(place);
        Grant(*sheet, heading, name, level);
        Click(Ok(*sheet));
        EXPECT_EQ(sheet->result(), QDialog::Accepted);
    }

    /// What the editor shows for a place: the level by "Kind name".
    QMap<QString, int> ShownLevels(const TreePosition& place)
    {
        const auto sheet = OpenSheet(place);
        const QAbstractItemModel& rows = *Part<QTreeView>(*sheet, "list").model();
        QMap<QString, int> levels;
        for (int row = 0; row < rows.rowCount(); ++row) {
            const QModelIndex name = rows.index(row, 0);
            levels.insert(name.data(Qt::AccessibleDescriptionRole).toString() + u' ' + name.data().toString(),
                          static_cast<int>(kLevels.indexOf(name.siblingAtColumn(1).data().toString())));
        }
        return levels;
    }
    /// The level that the shown rows mean for a user: the own row, else those of the groups, else Everyone's.
    int LevelOf(const QString& user, const QMap<QString, int>& shown) const
    {
        if (shown.contains(u"User "_s + user))
            return shown[u"User "_s + user];
        QList<int> levels;
        for (const QString& group : m_groupsOf.value(user)) {
            if (shown.contains(u"Group "_s + group))
                levels.append(shown[u"Group "_s + group]);
        }
        if (levels.isEmpty())
            return shown.value(u"Everyone Everyone"_s, 0);
        return levels.contains(0) ? 0 : *std::ranges::max_element(levels);
    }

    ToolOutcome As(const QString& user, const QString& password, const QStringList& arguments) const
    {
        return server.TrySvn(QStringList{u"--no-auth-cache"_s, u"--username"_s, user, u"--password"_s, password} +
                             arguments);
    }
    bool IsLetIn(const ToolOutcome& outcome) const
    {
        EXPECT_TRUE(outcome.exitCode == 0 || outcome.errors.contains("E175013"_L1)) << outcome.errors.toStdString();
        return outcome.exitCode == 0;
    }
    /// What the stock client may do at a place.
    int ClientLevel(const QString& user, const TreePosition& place)
    {
        const auto encoded = [](const QString& text) {
            return QString::fromLatin1(QUrl::toPercentEncoding(text, "/"));
        };
        const QString path = place.path == u"/" ? QString() : encoded(place.path);
        const QString address = model.GetUrl({}) + encoded(place.repositoryName) + path;
        if (!IsLetIn(As(user, u"secret"_s, {u"list"_s, address + kNoPeg})))
            return 0;
        const QString made = address + u"/made-%1"_s.arg(++m_made);
        return IsLetIn(As(user, u"secret"_s, {u"mkdir"_s, u"-m"_s, u"m"_s, made + kNoPeg})) ? 2 : 1;
    }

    RealServer server;
    RealModel real{LocalOptions(server)};
    CModel& model = real.model;
    QHash<QString, QStringList> m_groupsOf;
    int m_made = 0;
};

TEST_F(RealAccountsTest, AUserIsCreatedGroupedGrantedAndRefused)
{
    model.CreateRepository(u"Project"_s, true);
    const QString trunk = model.GetUrl({u"Project"_s, u"/"_s}) + u"trunk"_s;
    const auto canRead = [&](const QString& password) {
        return As(u"ann"_s, password, {u"list"_s, trunk}).exitCode == 0;
    };
    CreateUser(u"ann"_s, u"secret"_s);
    EXPECT_FALSE(canRead(u"secret"_s));
    CreateGroup(u"devs"_s, {u"ann"_s}, {});
    CreateGroup(u"all"_s, {}, {u"devs"_s});
    Grant({u"Project"_s, u"/"_s}, u"Groups"_s, u"all"_s, 1);
    EXPECT_EQ(ClientLevel(u"ann"_s, {u"Project"_s, u"/trunk"_s}), 1);
    SetPassword(u"ann"_s, u"changed"_s);
    EXPECT_FALSE(canRead(u"secret"_s));
    EXPECT_TRUE(canRead(u"changed"_s));
    Grant({u"Project"_s, u"/trunk"_s}, u"Users"_s, u"ann"_s, 0);
    EXPECT_FALSE(canRead(u"changed"_s));

    // A cycle is refused and changes nothing.
    CGroupDlg dialog(nullptr, model, u"devs"_s);
    Open(dialog);
    const ModalDriver driver([](QWidget& chooser) {
        Choose(chooser, u"Groups"_s, u"all"_s);
        Click(Ok(chooser));
    });
    Click(dialog, "add");
    EXPECT_EQ(MessageOf([&] { Click(Ok(dialog)); }), u"Group members have cycles.");
    EXPECT_EQ(model.GetGroupMembers(u"devs"_s), (QList<GroupMember>{{GroupMemberKind::User, u"ann"_s}}));
}

TEST_F(RealAccountsTest, WhatTheEditorShowsIsWhatAStockClientGets)
{
    for (const QString& repository : cases::Repositories())
        model.CreateRepository(repository, false);
    for (const auto& [repository, path] : cases::Folders())
        model.CreateFolders(repository, {path}, u"m"_s);
    for (const QString& user : cases::Users()) { // the dialog makes plain names alone
        if (user.contains(QRegularExpression(u"^[A-Za-z]+$"_s)))
            CreateUser(user, u"secret"_s);
        else
            model.CreateUser(user, u"secret"_s);
    }
    for (const cases::Group& group : cases::Groups()) {
        QList<GroupMember> members;
        for (const QString& user : group.users)
            members.append({GroupMemberKind::User, user});
        for (const QString& inner : group.groups)
            members.append({GroupMemberKind::Group, inner});
        if (group.name.contains(QRegularExpression(u"^[A-Za-z]+$"_s)))
            CreateGroup(group.name, group.users, group.groups);
        else
            model.CreateGroup(group.name, members);
        for (const ReachedUser& user :
             FindReachedUsers(members, [this](const QString& name) { return model.GetGroupMembers(name); }))
            m_groupsOf[user.name].append(group.name);
    }
    QMap<std::pair<QString, QString>, QList<cases::Entry>> places;
    for (const cases::Entry& entry : cases::Entries())
        places[{entry.repository, entry.path}].append(entry);
    for (auto place = places.cbegin(); place != places.cend(); ++place) {
        const auto sheet = OpenSheet({place.key().first, place.key().second});
        for (const cases::Entry& entry : *place) {
            const bool everyone = entry.kind == '*';
            const QString heading = everyone ? u"Special"_s : entry.kind == 'u' ? u"Users"_s : u"Groups"_s;
            const QString name = everyone ? u"Everyone"_s : entry.account;
            Grant(*sheet, heading, name, entry.level);
        }
        Click(Ok(*sheet));
        ASSERT_EQ(sheet->result(), QDialog::Accepted) << place.key().second.toStdString();
    }

    QMap<std::pair<QString, QString>, QMap<QString, int>> shown;
    ASSERT_GE(cases::Cases().size(), 30);
    for (const cases::Case& each : cases::Cases()) {
        SCOPED_TRACE((each.user + u" at "_s + each.repository + each.path).toStdString());
        QMap<QString, int>& levels = shown[{each.repository, each.path}];
        if (levels.isEmpty())
            levels = ShownLevels({each.repository, each.path});
        EXPECT_EQ(LevelOf(each.user, levels), each.level);
        EXPECT_EQ(ClientLevel(each.user, {each.repository, each.path}), each.level);
    }
}

TEST_F(RealAccountsTest, TheSystemsAccountsAreFoundAndGrantedByTheirIdentifiers)
{
    model.SetAuthenticationOptions({.windowsAuthentication = true, .basicAuthentication = true});
    const auto sheet = OpenSheet({});
    const ModalDriver driver([](QWidget& picker) {
        Type(picker, "text", u"root"_s);
        auto& found = Part<QTreeView>(picker, "found");
        EXPECT_TRUE(QTest::qWaitFor([&] { return Rows(found).contains(u"root"_s); }));
        found.setCurrentIndex(found.model()->index(0, 0));
        Click(Ok(picker));
    });
    Click(*sheet, "add");
    EXPECT_TRUE(driver.seen);
    const QString name = Part<QTreeView>(*sheet, "list").currentIndex().siblingAtColumn(0).data().toString();
    EXPECT_TRUE(name.endsWith(u"\\root"_s)) << name.toStdString();
    Click(Ok(*sheet));
    const PermissionList entries = model.GetSecurity({});
    ASSERT_EQ(entries.size(), 1);
    EXPECT_EQ(entries[0].account.kind, AccountKind::WindowsAccount);
    EXPECT_TRUE(entries[0].account.name == u"S-1-22-1-0" || entries[0].account.name == u"S-1-22-2-0");
}

} // namespace

} // namespace quenvolta::test
