#include "accounts/model_security_page_host.h"
#include "accounts/security_page.h"
#include "accounts_test.h"
#include "ui/property_sheet.h"

#include <QLabel>
#include <QRadioButton>
#include <QTreeView>

#include <ctime>

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::ModalDriver;
using test::Operation;
using test::StandInPermission;

namespace
{

const QString kUser = u"Quenvolta_User"_s;
const QString kGroup = u"Quenvolta_Group"_s;
const QString kEveryone = u"Quenvolta_Everyone"_s;
const QString kWindows = u"Quenvolta_WindowsAccount"_s;

constexpr std::array kOptions{"inherit", "noAccess", "readOnly", "readWrite"};

class SecurityPageTest : public test::AccountsTest
{
protected:
    SecurityPageTest()
    {
        server.data.users = {u"ann"_s, u"ben"_s, u"cat"_s};
        server.data.groups = {{u"devs"_s}};
        server.data.repositories = {{.name = u"r"_s, .entries = {{u"/a"_s, true}, {u"/a/b"_s, true}}}};
        At({}) = {{kUser, u"cat"_s, 2}, {kEveryone, u"Everyone"_s, 0}};
        At({u"r"_s, u"/"_s}) = {{kGroup, u"devs"_s, 1}, {kUser, u"ann"_s, 1}, {kUser, u"cat"_s, 0}};
        At({u"r"_s, u"/a"_s}) = {{kUser, u"ann"_s, 2}};
    }

    QList<StandInPermission>& At(const TreePosition& path)
    {
        return server.data.permissions[{path.repositoryName, path.path}];
    }
    /// A sheet with the page for an object, opened.
    QWidget& OpenPage(const TreePosition& path, CSecurityPage::Mode mode = CSecurityPage::Mode::Editable)
    {
        sheet = std::make_unique<CPropertySheet>(nullptr, u"Properties"_s);
        auto made = std::make_unique<CSecurityPage>(std::make_unique<CModelSecurityPageHost>(model, path), mode);
        page = made.get();
        sheet->AddPage(std::move(made));
        Open(*sheet);
        QCoreApplication::processEvents();
        server.ClearCalls();
        return *sheet;
    }
    QTreeView& List() { return Part<QTreeView>(*page, "list"); }
    /// The rows as "name: level", with "*" for one that is set here.
    QStringList Shown()
    {
        QStringList rows;
        for (int row = 0; row < List().model()->rowCount(); ++row) {
            const QModelIndex name = List().model()->index(row, 0);
            const QString tip = name.data(Qt::ToolTipRole).toString();
            rows.append(name.data().toString() + u": "_s + name.siblingAtColumn(1).data().toString() +
                        (tip.contains(u"set here"_s) ? u" *"_s : u""_s));
        }
        return rows;
    }
    QString Tip(const QString& account)
    {
        return List()
            .model()
            ->match(List().model()->index(0, 0), Qt::DisplayRole, account)
            .first()
            .data(Qt::ToolTipRole)
            .toString();
    }
    void SelectAccounts(const QStringList& accounts) { SelectRows(List(), accounts); }
    /// The options that can be chosen, the checked one in brackets.
    QStringList Options()
    {
        QStringList options;
        for (const char* name : kOptions) {
            const auto& option = Part<QRadioButton>(*page, name);
            const QString text = QString::fromLatin1(name);
            if (option.isChecked())
                options.append(u'[' + text + u']');
            else if (option.isEnabled())
                options.append(text);
        }
        return options;
    }
    QString InheritLabel() { return Part<QRadioButton>(*page, "inherit").text(); }
    void Choose(const char* option) { Click(*page, option); }
    void Press(QDialogButtonBox::StandardButton which) { Click(Button(*sheet, which)); }
    bool CanApply() { return Button(*sheet, QDialogButtonBox::Apply).isEnabled(); }
    /// "A&dd...", with the choice of these.
    void Add(const QStringList& accounts)
    {
        const ModalDriver driver([&](QWidget& modal) {
            SelectRows(Part<QTreeView>(modal, "list"), accounts);
            Click(accounts.isEmpty() ? Button(modal, QDialogButtonBox::Cancel) : Ok(modal));
        });
        Click(*page, "add");
        EXPECT_TRUE(driver.seen);
    }

    std::unique_ptr<CPropertySheet> sheet;
    CSecurityPage* page = nullptr;
};

TEST_F(SecurityPageTest, TheNearestObjectThatNamesAnAccountCounts)
{
    OpenPage({u"r"_s, u"/a/b"_s});
    EXPECT_EQ(Shown(), (QStringList{u"ann: Read / Write"_s, u"devs: Read Only"_s, u"cat: No Access"_s,
                                    u"Everyone: No Access"_s}));
    EXPECT_EQ(SelectedRows(List()), QStringList{u"ann"_s});
    EXPECT_TRUE(HasFocus(*sheet, "list"));
    EXPECT_EQ(Tip(u"ann"_s), u"Read / Write is inherited from /svn/r/a.");
    EXPECT_EQ(Tip(u"devs"_s), u"Read Only is inherited from /svn/r/.");
    EXPECT_EQ(Tip(u"Everyone"_s), u"No Access is inherited from the permissions of the whole server.");
    SelectAccounts({u"devs"_s});
    EXPECT_EQ(InheritLabel(), u"&Inherit from parent (Read Only)");
    EXPECT_EQ(Options(), (QStringList{u"[inherit]"_s, u"noAccess"_s, u"readOnly"_s, u"readWrite"_s}));
    EXPECT_FALSE(CanApply());

    OpenPage({u"r"_s, u"/a"_s});
    EXPECT_EQ(Shown().first(), u"ann: Read / Write *");
    EXPECT_EQ(Tip(u"ann"_s),
              u"Read / Write is set here. Without this entry, Read Only would be inherited from /svn/r/.");
    EXPECT_EQ(Options(), (QStringList{u"inherit"_s, u"noAccess"_s, u"readOnly"_s, u"[readWrite]"_s}));
    EXPECT_EQ(InheritLabel(), u"&Inherit from parent (Read Only)");

    OpenPage({});
    EXPECT_EQ(Shown(), (QStringList{u"cat: Read / Write *"_s, u"Everyone: No Access *"_s}));
    EXPECT_EQ(Options(), (QStringList{u"noAccess"_s, u"readOnly"_s, u"[readWrite]"_s}));
    EXPECT_EQ(InheritLabel(), u"&Inherit from parent");
}

TEST_F(SecurityPageTest, OptionsTellWhatTheSelectedRowsHaveInCommon)
{
    At({u"r"_s, u"/a"_s}) = {{kUser, u"ann"_s, 1}, {kUser, u"ben"_s, 2}, {kUser, u"x"_s, 3}};
    OpenPage({u"r"_s, u"/a"_s});
    SelectAccounts({u"ann"_s, u"ben"_s});
    EXPECT_EQ(Options(), (QStringList{u"noAccess"_s, u"readOnly"_s, u"readWrite"_s})); // ben inherits nothing
    SelectAccounts({u"ann"_s, u"devs"_s});
    EXPECT_EQ(Options(), (QStringList{u"inherit"_s, u"noAccess"_s, u"readOnly"_s, u"readWrite"_s}));
    EXPECT_EQ(InheritLabel(), u"&Inherit from parent (Read Only)"); // both
    SelectAccounts({u"devs"_s, u"cat"_s});
    EXPECT_EQ(Options().first(), u"[inherit]");
    EXPECT_EQ(InheritLabel(), u"&Inherit from parent");
    SelectAccounts({u"x"_s}); // a level that nobody knows is kept, and is none of the options
    EXPECT_EQ(Options(), (QStringList{u"noAccess"_s, u"readOnly"_s, u"readWrite"_s}));
    EXPECT_EQ(Shown()[2], u"x:  *");
    List().clearSelection();
    EXPECT_EQ(Options(), QStringList());
    EXPECT_EQ(InheritLabel(), u"&Inherit from parent");
    EXPECT_FALSE(Part<QPushButton>(*page, "remove").isEnabled());

    SelectAccounts({u"ann"_s, u"ben"_s});
    Choose("noAccess");
    EXPECT_EQ(Options(), (QStringList{u"[noAccess]"_s, u"readOnly"_s, u"readWrite"_s}));
    EXPECT_TRUE(CanApply());
    SelectAccounts({u"ann"_s});
    Choose("inherit");
    EXPECT_EQ(Shown(), (QStringList{u"ann: Read Only"_s, u"ben: No Access *"_s, u"x:  *"_s, u"devs: Read Only"_s,
                                    u"cat: No Access"_s, u"Everyone: No Access"_s}));
    EXPECT_TRUE(server.Calls().isEmpty());
    Press(QDialogButtonBox::Apply);
    EXPECT_EQ(At({u"r"_s, u"/a"_s}), (QList<StandInPermission>{{kUser, u"ben"_s, 0}, {kUser, u"x"_s, 3}}));
    EXPECT_FALSE(CanApply());
    EXPECT_EQ(SelectedRows(List()), QStringList{u"ann"_s}); // though its row moved
}

TEST_F(SecurityPageTest, AddedAccountsGetReadWriteAndListedOnesAreSelected)
{
    OpenPage({u"r"_s, u"/a"_s});
    Add({});
    EXPECT_FALSE(CanApply());
    Add({u"ann"_s, u"devs"_s});
    EXPECT_FALSE(CanApply());
    EXPECT_EQ(SelectedRows(List()), (QStringList{u"ann"_s, u"devs"_s}));
    Type(*page, "filter", u"dev"_s);
    Add({u"Everyone"_s, u"ben"_s});
    EXPECT_EQ(Shown(), (QStringList{u"ann: Read / Write *"_s, u"devs: Read Only"_s, u"cat: No Access"_s,
                                    u"Everyone: No Access"_s, u"ben: Read / Write *"_s}));
    EXPECT_EQ(SelectedRows(List()), (QStringList{u"Everyone"_s, u"ben"_s}));
    EXPECT_TRUE(HasFocus(*sheet, "list"));
    server.ClearCalls();
    Press(QDialogButtonBox::Ok);
    EXPECT_EQ(server.CallsOf(u"SetSecurity"_s).size(), 1);
    EXPECT_EQ(At({u"r"_s, u"/a"_s}), (QList<StandInPermission>{{kUser, u"ann"_s, 2}, {kUser, u"ben"_s, 2}}));
    EXPECT_FALSE(sheet->isVisible());
}

TEST_F(SecurityPageTest, RemovingTakesOnlyWhatIsSetHere)
{
    OpenPage({u"r"_s, u"/a"_s});
    Click(*page, "remove"); // ann, who then has what the repository gives
    EXPECT_EQ(Shown().first(), u"ann: Read Only");
    EXPECT_EQ(MessageOf([this] { Click(*page, "remove"); }, QMessageBox::Warning),
              u"You cannot remove 'ann' because this object is inheriting permissions from its parent.");
    SelectAccounts({u"ann"_s, u"devs"_s});
    EXPECT_EQ(
        MessageOf([this] { Click(*page, "remove"); }, QMessageBox::Warning),
        u"You cannot remove selected entries because these objects are inheriting permissions from their parent.");
    Add({u"ben"_s});
    SelectAccounts({u"ben"_s, u"devs"_s});
    Click(*page, "remove");
    EXPECT_EQ(Shown(),
              (QStringList{u"ann: Read Only"_s, u"devs: Read Only"_s, u"cat: No Access"_s, u"Everyone: No Access"_s}));
    Press(QDialogButtonBox::Apply);
    EXPECT_EQ(At({u"r"_s, u"/a"_s}), QList<StandInPermission>());

    OpenPage({});
    List().selectAll();
    Click(*page, "remove");
    EXPECT_EQ(Shown(), QStringList());
    EXPECT_EQ(Options(), QStringList());
    Press(QDialogButtonBox::Ok);
    EXPECT_EQ(server.CallsOf(u"SetGlobalSecurity"_s).size(), 1);
    EXPECT_EQ(At({}), QList<StandInPermission>());
}

TEST_F(SecurityPageTest, AnUnchangedPageWritesNothingAndACancelledOneNeither)
{
    OpenPage({u"r"_s, u"/a"_s});
    Press(QDialogButtonBox::Ok);
    EXPECT_TRUE(server.Calls().isEmpty());
    OpenPage({u"r"_s, u"/a"_s});
    Choose("noAccess");
    Press(QDialogButtonBox::Cancel);
    EXPECT_TRUE(server.Calls().isEmpty());
}

TEST_F(SecurityPageTest, AFailureLosesNothing)
{
    OpenPage({u"r"_s, u"/a"_s});
    Choose("noAccess");
    server.Fail(Operation::ExecMethod, u"SetSecurity"_s, {WBEM_E_ACCESS_DENIED});
    EXPECT_EQ(MessageOf([this] { Press(QDialogButtonBox::Ok); }), u"WMI access denied.");
    EXPECT_TRUE(sheet->isVisible());
    EXPECT_EQ(Shown().first(), u"ann: No Access *");
    EXPECT_TRUE(CanApply());
    EXPECT_EQ(server.CallsOf(u"GetSecurity"_s).size(), 0);
    // Written, but not read again: a list that was read in part would be written the next time.
    server.Fail(Operation::ExecMethod, u"GetSecurity"_s, {WBEM_E_ACCESS_DENIED}, 1, 1);
    EXPECT_EQ(MessageOf([this] { Press(QDialogButtonBox::Apply); }), u"WMI access denied.");
    EXPECT_EQ(Shown().size(), 4);
    EXPECT_TRUE(CanApply());
    Press(QDialogButtonBox::Ok);
    EXPECT_FALSE(sheet->isVisible());
    EXPECT_EQ(At({u"r"_s, u"/a"_s}), (QList<StandInPermission>{{kUser, u"ann"_s, 0}}));

    server.Fail(Operation::EnumerateInstances, kUser, {WBEM_E_ACCESS_DENIED});
    OpenPage({u"r"_s, u"/a"_s});
    EXPECT_EQ(MessageOf([this] { Click(*page, "add"); }), u"WMI access denied.");

    server.Fail(Operation::ExecMethod, u"GetSecurity"_s, {WBEM_E_ACCESS_DENIED});
    EXPECT_EQ(MessageOf([this] { OpenPage({u"r"_s, u"/a"_s}); }), u"WMI access denied.");
    EXPECT_FALSE(page->isEnabled());
}

TEST_F(SecurityPageTest, ReadOnlyPagesShowAndChangeNothing)
{
    OpenPage({u"r"_s, u"/a"_s}, CSecurityPage::Mode::ReadOnly);
    EXPECT_EQ(Shown().size(), 4);
    EXPECT_EQ(Options(), QStringList{u"[readWrite]"_s});
    EXPECT_FALSE(Part<QPushButton>(*page, "add").isVisible());
    EXPECT_FALSE(Part<QPushButton>(*page, "remove").isVisible());
    EXPECT_TRUE(Part<QLabel>(*page, "replicated").isVisible());
    for (const char* option : kOptions)
        EXPECT_FALSE(Part<QRadioButton>(*page, option).isEnabled()) << option;
    OpenPage({u"r"_s, u"/a"_s});
    EXPECT_FALSE(Part<QLabel>(*page, "replicated").isVisible());
}

TEST_F(SecurityPageTest, FiveThousandAccountsStayQuick)
{
    constexpr int kMany = 5000;
    constexpr int kLongestMs = 2000; // many times what it takes
    for (int i = 0; i < kMany; ++i) {
        At({u"r"_s, u"/"_s}).append({kUser, u"user%1"_s.arg(i), 1});
        At({u"r"_s, u"/a"_s}).append({kUser, u"other%1"_s.arg(i), 1});
    }
    const std::clock_t begin = std::clock();
    OpenPage({u"r"_s, u"/a"_s});
    List().selectAll();
    Choose("readWrite");
    Type(*page, "filter", u"USER49"_s);
    EXPECT_EQ(Shown().size(), 111);
    List().selectAll();
    Choose("inherit");
    Type(*page, "filter", QString());
    List().selectAll();
    Press(QDialogButtonBox::Apply);
    EXPECT_EQ(At({u"r"_s, u"/a"_s}).size(), 2 * kMany + 4 - 111);
    EXPECT_LT(std::clock() - begin, kLongestMs * CLOCKS_PER_SEC / 1000);
}

} // namespace

} // namespace quenvolta
