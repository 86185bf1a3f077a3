#include "dashboard/status_snapshot.h"
#include "foundation/com_exception.h"
#include "foundation/server_not_installed_exception.h"
#include "foundation/simple_exception.h"
#include "snapin/computer_option.h"
#include "snapin_test.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::Operation;

TEST(StatusErrorTest, FollowsTheKindOfFailure)
{
    const auto ofCode = [](std::uint32_t code) { return StatusErrorOf(ComException(MakeHResult(code))); };
    for (const std::uint32_t rpc : {0x80070600U, 0x800706BAU, 0x800706FFU})
        EXPECT_EQ(ofCode(rpc), StatusError::Unreachable);
    for (const std::uint32_t denied : {0x8001011BU, 0x80041003U, 0x80070005U})
        EXPECT_EQ(ofCode(denied), StatusError::AccessDenied);
    EXPECT_EQ(ofCode(0x80041013), StatusError::BrokenManagement);
    for (const std::uint32_t other : {0x800705FFU, 0x80070700U, 0x80004005U, 0x80010108U})
        EXPECT_EQ(ofCode(other), StatusError::General);
    EXPECT_EQ(StatusErrorOf(ServerNotInstalledException({})), StatusError::NotInstalled);
    EXPECT_EQ(StatusErrorOf(SimpleException(u"newer")), StatusError::BrokenManagement);
}

TEST(StatusSnapshotTest, ReadsWhatTheVersionAndTheAuthenticationOffer)
{
    test::LoadedSnapIn loaded;
    loaded.server.data.repositories = {{u"a"_s}, {u"b"_s}};
    loaded.server.data.users = {u"ann"_s};
    CModel& model = loaded.Load().Model();
    const CStatusSnapshot status = CStatusSnapshot::Read(model);
    EXPECT_TRUE(status.isRead);
    EXPECT_EQ(status.error, StatusError::None);
    EXPECT_EQ(status.httpServiceState, 4U);
    EXPECT_EQ(status.settings.url, u"https://srv1/svn/");
    EXPECT_EQ(status.repositoryCount, 2);
    EXPECT_EQ(status.userCount, 1);
    EXPECT_TRUE(status.qdfsService.has_value());
    EXPECT_EQ(status.versions.subversionVersion, u"1.14.2");

    loaded.server.data.service[u"AuthType"_s] = 1U;
    loaded.server.ClearCalls();
    EXPECT_TRUE(CStatusSnapshot::Read(model).isRead);
    for (const test::RecordedCall& call : loaded.server.Calls())
        EXPECT_NE(call.path, u"Quenvolta_User");

    test::LoadedSnapIn old(u"2.8"_s);
    EXPECT_FALSE(CStatusSnapshot::Read(old.Load().Model()).qdfsService.has_value());
}

TEST(StatusSnapshotTest, PartsThatFailStandAloneAndOthersEndTheReading)
{
    test::LoadedSnapIn loaded;
    CModel& model = loaded.Load().Model();
    loaded.server.Fail(Operation::EnumerateInstances, u"Quenvolta_Repository"_s, {E_ACCESSDENIED});
    loaded.server.Fail(Operation::EnumerateInstances, u"Quenvolta_Group"_s, {WBEM_E_FAILED});
    const CStatusSnapshot partly = CStatusSnapshot::Read(model);
    EXPECT_TRUE(partly.isRead);
    EXPECT_TRUE(partly.repositoriesFailure.contains(u"0x80070005"_s));
    EXPECT_TRUE(partly.accountsFailure.contains(u"0x80041001"_s));

    loaded.server.Fail(Operation::GetObject, u"Quenvolta_Service"_s, {RPC_S_SERVER_UNAVAILABLE}, -1);
    const CStatusSnapshot failed = CStatusSnapshot::Read(model);
    EXPECT_FALSE(failed.isRead);
    EXPECT_EQ(failed.error, StatusError::Unreachable);
    EXPECT_TRUE(failed.errorText.contains(u"0x800706BA"_s));
}

TEST(RootStatusTest, AServerThatCannotBeManagedHasNoChildrenUntilItCan)
{
    test::LoadedSnapIn loaded;
    loaded.server.hasNamespace = false;
    loaded.Load();
    EXPECT_EQ(loaded.console.Children({}), QStringList());
    loaded.server.hasNamespace = true;
    loaded.console.Notify({}, MMC_NOTIFY_TYPE::MMCN_REFRESH);
    EXPECT_EQ(loaded.console.Children({}).size(), 3);
    EXPECT_EQ(loaded.messages.errors, QStringList());
}

TEST(ComputerOptionTest, IsFoundInAllItsForms)
{
    struct Row {
        QStringList arguments;
        QString computer;
        qsizetype count;
    };
    const Row rows[] = {
        {{u"/computer=srv"_s}, u"srv"_s, 1},
        {{u"/COMPUTER=srv"_s}, u"srv"_s, 1},
        {{u"x"_s, u"/Computer"_s, u"srv"_s, u"y"_s}, u"srv"_s, 2},
        {{u"/computerx=srv"_s}, {}, 0},
        {{u"/computer:srv"_s, u"/computer=real"_s}, u"real"_s, 1},
        {{u"/computer"_s}, {}, 0},
        {{u"-computer=srv"_s, u"computer=srv"_s}, {}, 0},
        {{u"/computer="_s, u"/computer=second"_s}, {}, 1},
        {{u"/computer=a=b c"_s}, u"a=b c"_s, 1},
    };
    for (const Row& row : rows) {
        const ComputerOption found = FindComputerOption(row.arguments);
        EXPECT_EQ(found.computer, row.computer) << row.arguments.join(u' ').toStdString();
        EXPECT_EQ(found.count, row.count) << row.arguments.join(u' ').toStdString();
    }
}

} // namespace quenvolta
