#include "async/async_call_monitor_dlg.h"
#include "foundation/com_exception.h"
#include "foundation/wmi_client_exception.h"
#include "real_model.h"
#include "repositories/create_project_dlg.h"
#include "repositories/delete_folder_dlg.h"
#include "repositories/hooks_page.h"
#include "repositories/repository_wizard/repository_wizard.h"
#include "support/dump_file.h"
#include "support/expect_failure.h"
#include "support/modal_driver.h"
#include "support/port_holder.h"
#include "ui/property_sheet.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::int32_t kDumpMode = 1;
constexpr int kRevisions = 5000; // minutes of work, of which the tests see the beginning
constexpr int kFewRevisions = 60;
constexpr int kLongestWaitMs = 60'000;

template <typename Widget>
Widget& Part(QWidget& window, const char* name)
{
    auto* part = window.findChild<Widget*>(QString::fromLatin1(name));
    if (part == nullptr)
        throw std::runtime_error(name);
    return *part;
}

void PressOk(QWidget& dialog)
{
    Part<QDialogButtonBox>(dialog, "buttons").button(QDialogButtonBox::Ok)->click();
}

/// Imports of dumps by a true provider, watched in the dialog.
class WatchedImportTest : public ::testing::Test
{
protected:
    QString Write(const QByteArray& dump) const
    {
        QFile file(server.Scratch(u"dump"_s));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(dump);
        return file.fileName();
    }
    void Import(const QByteArray& dump)
    {
        CAsyncCallMonitorDlg progress(nullptr, {.title = u"Import"_s,
                                                .text = u"Importing..."_s,
                                                .detail = {},
                                                .cancellable = true,
                                                .cancellingText = u"Cancelling..."_s,
                                                .cancellingDetail = {}});
        real.model.ImportRepository(u"New"_s, Write(dump), kDumpMode, progress);
    }
    void ExpectNothingLeft()
    {
        EXPECT_FALSE(real.model.RepositoryExists(u"New"_s));
        EXPECT_TRUE(QTest::qWaitFor([this] { return server.HiddenFolders().isEmpty(); }, kLongestWaitMs));
    }
    /// Does something when the import is under way.
    template <typename Action>
    ModalDriver InTheMiddle(Action action)
    {
        return ModalDriver([this, action](QWidget& dialog) {
            EXPECT_TRUE(QTest::qWaitFor([this] { return server.IsImporting(); }, kLongestWaitMs));
            action(dialog);
        });
    }

    RealServer server;
    RealModel real{LocalOptions(server)};
};

} // namespace

TEST_F(WatchedImportTest, TheDialogStaysUntilTheDumpIsIn)
{
    bool moving = false;
    const auto driver =
        InTheMiddle([&](QWidget& dialog) { moving = Part<QProgressBar>(dialog, "progress").isVisible(); });
    Import(DumpOf(kFewRevisions));
    EXPECT_TRUE(moving);
    EXPECT_EQ(real.model.GetRepository(u"New"_s).totalRevisions, kFewRevisions);
    EXPECT_TRUE(server.HiddenFolders().isEmpty());
}

TEST_F(WatchedImportTest, ACancelledOneLeavesNothing)
{
    const auto driver = InTheMiddle([](QWidget& dialog) { Part<QPushButton>(dialog, "cancel").click(); });
    ExpectCode(WBEM_E_CALL_CANCELLED, [this] { Import(DumpOf(kRevisions)); });
    EXPECT_TRUE(driver.seen);
    ExpectNothingLeft();
    Import(DumpOf(2)); // done between two polls, and the name is free
    EXPECT_EQ(real.model.GetRepository(u"New"_s).totalRevisions, 2);
}

TEST_F(WatchedImportTest, AFailedOneTellsWhyAndLeavesNothing)
{
    const QByteArray dump = DumpOf(kFewRevisions);
    const auto failure = FailureOf<WMIClientException>([&] { Import(dump.first(dump.size() * 3 / 4)); });
    ASSERT_TRUE(failure);
    EXPECT_FALSE(failure->GetMessage().isEmpty());
    ExpectNothingLeft();
}

TEST_F(WatchedImportTest, TheEndOfTheProviderEndsTheDialog)
{
    const auto driver = InTheMiddle([this](QWidget&) { KillProviders(server); });
    ExpectCode(RPC_E_DISCONNECTED, [this] { Import(DumpOf(kRevisions)); });
    EXPECT_TRUE(driver.seen);
    ExpectNothingLeft();
}

namespace
{

/// An administrator at a true server, and the stock client.
class DailyWorkTest : public ::testing::Test
{
protected:
    DailyWorkTest()
    {
        CModel& model = real.model;
        model.SetServerName(u"localhost"_s);
        model.SetNetworkOptions(false, PortHolder::Free(), QStringList{u"127.0.0.1"_s});
        model.StartHttpService();
        model.CreateUser(u"ann"_s, u"secret"_s);
    }
    ~DailyWorkTest() override { EXPECT_NO_THROW(real.model.StopHttpService()); }

    /// Through the wizard; the permissions are those of the option. What the summary says.
    QString CreateByWizard(const QString& name, const char* permissions)
    {
        RepositoryWizard::CRepositoryWizard wizard(nullptr, real.model, real.preferences);
        wizard.show();
        wizard.next();
        Part<QLineEdit>(*wizard.currentPage(), "name").setText(name);
        wizard.next();
        Part<QAbstractButton>(*wizard.currentPage(), "singleProject").click();
        wizard.next();
        Part<QAbstractButton>(*wizard.currentPage(), permissions).click();
        wizard.next();
        return Part<QTextEdit>(*wizard.currentPage(), "summary").toPlainText();
    }
    ToolOutcome AsAnn(const QStringList& arguments) const
    {
        return server.TrySvn(
            QStringList{u"--no-auth-cache"_s, u"--username"_s, u"ann"_s, u"--password"_s, u"secret"_s} + arguments);
    }
    ToolOutcome MakeFolder(const QString& path)
    {
        return AsAnn({u"mkdir"_s, u"-m"_s, u"m"_s, real.model.BuildRepositoryUrl(u"Open"_s) + path});
    }

    RealServer server;
    RealModel real{LocalOptions(server)};
};

} // namespace

TEST_F(DailyWorkTest, ARepositoryOfTheWizardIsCheckedOutAsItsPermissionsSay)
{
    const QString summary = CreateByWizard(u"Open"_s, "explicitAccess");
    const QString url = real.model.BuildRepositoryUrl(u"Open"_s);
    EXPECT_TRUE(summary.contains(url)) << summary.toStdString();
    EXPECT_EQ(url + u'/', real.model.GetUrl({u"Open"_s, u"/"_s}));
    const QString copy = server.Scratch(u"copy"_s);
    const ToolOutcome checkout = AsAnn({u"checkout"_s, u"-q"_s, url, copy});
    EXPECT_EQ(checkout.exitCode, 0) << checkout.errors.toStdString();
    for (const char* folder : {"/trunk", "/branches", "/tags"})
        EXPECT_TRUE(QFile::exists(copy + QString::fromLatin1(folder)));
    EXPECT_EQ(server.Svnlook({u"log"_s, server.RepositoriesFolder() + "/Open"_L1}), u"Initial structure.\n"_s);
    const ToolOutcome commit = MakeFolder(u"/trunk/a"_s);
    EXPECT_EQ(commit.exitCode, 0) << commit.errors.toStdString();

    CreateByWizard(u"Closed"_s, "defaultAccess");
    const ToolOutcome refused = AsAnn({u"list"_s, real.model.BuildRepositoryUrl(u"Closed"_s)});
    EXPECT_TRUE(refused.errors.contains(u"forbidden"_s)) << refused.errors.toStdString();
}

TEST_F(DailyWorkTest, ProjectsAreOneCommitAndAHookOfTheEditorStopsOne)
{
    CreateByWizard(u"Open"_s, "explicitAccess");
    const QString folder = server.RepositoriesFolder() + "/Open"_L1;
    CCreateProjectDlg project(nullptr, real.model, {u"Open"_s, u"/trunk"_s});
    project.show();
    Part<QLineEdit>(project, "name").setText(u"web"_s);
    PressOk(project);
    EXPECT_FALSE(project.isVisible());
    EXPECT_EQ(real.model.GetRepository(u"Open"_s).totalRevisions, 2);
    EXPECT_EQ(server.Svnlook({u"log"_s, folder}), u"Create project 'web'\n"_s);
    EXPECT_EQ(server.Svnlook({u"changed"_s, folder}), u"A   trunk/web/\nA   trunk/web/branches/\nA   trunk/web/tags/\n"
                                                      "A   trunk/web/trunk/\n"_s);

    CPropertySheet sheet(nullptr, {});
    auto page = std::make_unique<CHooksPage>(real.model, u"Open"_s);
    auto& list = Part<QTreeWidget>(*page, "list");
    sheet.AddPage(std::move(page));
    sheet.show();
    QCoreApplication::processEvents();
    list.setCurrentItem(list.findItems(u"Pre-commit hook"_s, Qt::MatchExactly | Qt::MatchRecursive).value(0));
    const QString script = u"#!/bin/sh\necho 'Not today.' >&2\nexit 1\n"_s;
    const ModalDriver driver([&](QWidget& editor) {
        Part<QPlainTextEdit>(editor, "script").insertPlainText(script);
        PressOk(editor);
    });
    Part<QPushButton>(sheet, "edit").click();
    PressOk(sheet);
    EXPECT_EQ(real.model.GetHook(u"Open"_s, HookKind::PreCommit), (HookInfo{script, true}));
    const ToolOutcome stopped = MakeFolder(u"/trunk/a"_s);
    EXPECT_EQ(stopped.exitCode, 1);
    EXPECT_TRUE(stopped.errors.contains(u"Not today."_s)) << stopped.errors.toStdString();

    CDeleteFolderDlg deletion(nullptr, real.model, {u"Open"_s, u"/trunk/web"_s});
    deletion.show();
    PressOk(deletion); // hooks aren't run for the administrator
    EXPECT_EQ(server.Svnlook({u"log"_s, folder}), u"Deleted folder '/trunk/web'.\n"_s);
}

} // namespace quenvolta::test
