#include "foundation/com_exception.h"
#include "foundation/server_not_installed_exception.h"
#include "foundation/simple_exception.h"
#include "foundation/wmi_client_exception.h"
#include "real_model.h"

#include <QDir>
#include <QFile>
#include <QThread>

#include <algorithm>
#include <gtest/gtest.h>

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

namespace
{

QStringList NamesOf(const QList<RepositoryInfo>& repositories)
{
    QStringList names;
    for (const RepositoryInfo& each : repositories)
        names.append(each.name);
    return names;
}

QStringList PathsOf(const QList<RepositoryEntryInfo>& entries)
{
    QStringList paths;
    for (const RepositoryEntryInfo& each : entries)
        paths.append(each.path);
    return paths;
}

class RealModelTest : public ::testing::Test
{
protected:
    RealServer server;
};

TEST_F(RealModelTest, RepositoriesOfTheStockToolsAndOfTheModelStandBesideEachOther)
{
    server.MakeWithSvnadmin(u"Stock"_s);
    server.Import(u"Stock"_s, {u"trunk/file10"_s, u"trunk/file9"_s, u"trunk/\u00fcber uns/a"_s});
    RealModel real(LocalOptions(server));
    real.model.Connect({});
    real.model.CreateRepository(u"Made"_s, true);
    EXPECT_EQ(NamesOf(real.model.GetRepositories()), QStringList({u"Made"_s, u"Stock"_s}));

    const RepositoryInfo made = real.model.GetRepository(u"Made"_s);
    EXPECT_EQ(made.type, 0);
    EXPECT_EQ(made.totalRevisions, 1);
    EXPECT_EQ(server.Svn({u"ls"_s, server.FileUrl(u"Made"_s)}), u"branches/\ntags/\ntrunk/\n"_s);
    EXPECT_TRUE(server.Svn({u"log"_s, server.FileUrl(u"Made"_s)}).contains(u"Initial structure."_s));

    QList<RepositoryEntryInfo> entries = real.model.GetChildren({u"Stock"_s, u"/trunk"_s});
    std::ranges::sort(entries, {}, &RepositoryEntryInfo::path); // the server has no order of its own
    EXPECT_EQ(PathsOf(entries), QStringList({u"/trunk/file10"_s, u"/trunk/file9"_s, u"/trunk/\u00fcber uns"_s}));
    EXPECT_EQ(entries.last().kind, EntryKind::Folder);
    EXPECT_EQ(entries.first().kind, EntryKind::File);
    EXPECT_EQ(entries.first().parentPath, u"/trunk"_s);

    real.model.CreateFolders(u"Stock"_s, {u"/new"_s, u"/new/deep"_s}, u"two\nlines"_s);
    EXPECT_EQ(server.Svnlook({u"log"_s, server.RepositoriesFolder() + "/Stock"_L1}), u"two\nlines\n"_s);
    real.model.DeleteFolders(u"Stock"_s, {u"/new"_s}, u"gone"_s);
    EXPECT_TRUE(real.model.SupportsMergeinfo(u"Made"_s));

    real.model.RenameRepository(u"Stock"_s, u"Renamed"_s);
    EXPECT_FALSE(real.model.RepositoryExists(u"Stock"_s));
    EXPECT_EQ(server.Svn({u"ls"_s, server.FileUrl(u"Renamed"_s)}), u"trunk/\n"_s);
    real.model.DeleteRepository(u"Renamed"_s);
    EXPECT_EQ(QDir(server.RepositoriesFolder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{u"Made"_s});
}

TEST_F(RealModelTest, ABrokenRepositoryIsListedAndTellsItsOwnError)
{
    server.MakeWithSvnadmin(u"good"_s);
    server.MakeWithSvnadmin(u"bad"_s);
    server.Break(u"bad"_s);
    RealModel real(LocalOptions(server));
    const QList<RepositoryInfo> repositories = real.model.GetRepositories();
    ASSERT_EQ(NamesOf(repositories), QStringList({u"bad"_s, u"good"_s}));
    EXPECT_FALSE(repositories[0].totalRevisions);
    EXPECT_EQ(repositories[1].totalRevisions, 0);
    try {
        real.model.GetChildren({u"bad"_s, u"/"_s});
        FAIL() << "a broken repository was read";
    } catch (const WMIClientException& failure) {
        EXPECT_TRUE(failure.GetMessage().contains(u"'bad'"_s)) << failure.GetMessage().toStdString();
        EXPECT_FALSE(failure.Details().isEmpty());
    }
}

TEST_F(RealModelTest, EveryVersionUpTo33IsServedAndNewerOnesAreRefused)
{
    server.MakeWithSvnadmin(u"Project"_s);
    for (const QString& version :
         {u"2.0"_s, u"2.1"_s, u"2.5.9"_s, u"2.6"_s, u"2.7.0"_s, u"2.8"_s, u"3.0"_s, u"3.2.1"_s, u"3.3"_s, u"3.3.9"_s}) {
        RealModel real(LocalOptions(server, version));
        const QList<RepositoryInfo> repositories = real.model.GetRepositories();
        ASSERT_EQ(repositories.size(), 1) << version.toStdString();
        EXPECT_EQ(repositories[0].type.has_value(), version >= u"3"_s) << version.toStdString();
        EXPECT_EQ(real.model.GetServerVersionInfo().version, version);
        EXPECT_FALSE(real.model.GetServerVersionInfo().subversionVersion.isEmpty());
        real.model.GetServerStatus();
        EXPECT_TRUE(real.model.GetUsers().isEmpty());
        const TreePosition project{u"Project"_s, u"/"_s};
        EXPECT_TRUE(real.model.GetSecurity({}).isEmpty());
        EXPECT_TRUE(real.model.GetSecurity(project).isEmpty());
        const PermissionList everyone{{{AccountKind::Everyone, {}}, AccessLevel::ReadOnly}};
        real.model.SetSecurity(project, everyone);
        EXPECT_EQ(real.model.GetSecurity(project), everyone);
        real.model.SetSecurity(project, {});
        real.model.SetAuthenticationOptions({});
        EXPECT_FALSE(real.model.GetServerSettings().windowsAuthentication);
        EXPECT_EQ(real.model.GetCertificateInformation(), CertificateInfo{});
        EXPECT_TRUE(real.model.GetGroups().isEmpty());
    }
    for (const QString& version : {u"3.4"_s, u"4.0.1"_s}) {
        RealModel real(LocalOptions(server, version));
        try {
            real.model.Connect({});
            FAIL() << version.toStdString();
        } catch (const SimpleException& refusal) {
            EXPECT_EQ(refusal.GetMessage(),
                      u"You are connecting to Quenvolta Server %1. Quenvolta Server Manager 3.3.1 can "
                      "manage Quenvolta Server 3.3 or older."_s.arg(version));
        }
    }
}

TEST_F(RealModelTest, WhatIsNotBuiltYetSaysSo)
{
    RealModel real(LocalOptions(server));
    real.model.CreateRepository(u"Project"_s, false);
    try {
        real.model.ConvertToQdfs(u"Project"_s);
        FAIL();
    } catch (const WMIClientException& failure) {
        EXPECT_EQ(failure.Code(), WBEM_E_NOT_SUPPORTED);
        EXPECT_TRUE(failure.GetMessage().contains(u"Quenvolta_Repository.ConvertToQdfs"_s));
    }
}

TEST_F(RealModelTest, AKilledProviderIsReplacedByTheNextCall)
{
    server.MakeWithSvnadmin(u"Project"_s);
    RealModel real(LocalOptions(server));
    ASSERT_EQ(real.model.GetRepositories().size(), 1);
    KillProviders(server);
    EXPECT_EQ(real.model.GetRepositories().size(), 1);
    KillProviders(server);
    real.model.CreateRepository(u"Second"_s, true);
    EXPECT_EQ(real.model.GetRepositories().size(), 2);
    EXPECT_EQ(ProvidersOf(server).size(), 1);
}

// A change whose answer is lost is repeated under the same identifier, and done once.
TEST_F(RealModelTest, AKillAtAnyMomentOfAChangeDoesItOnceOrSaysThatItFailed)
{
    constexpr int kChanges = 40;
    RealModel real(LocalOptions(server));
    real.model.CreateRepository(u"Project"_s, false);
    int done = 0;
    for (int i = 0; i < kChanges; ++i) {
        real.model.GetRepositories(); // a provider runs again
        const pid_t provider = ProvidersOf(server).value(0);
        ASSERT_GT(provider, 0);
        // Somewhere between the call's beginning and a while after its end.
        const std::unique_ptr<QThread> killer(QThread::create([provider, i] {
            QThread::usleep(static_cast<unsigned long>(i) * 250);
            ::kill(provider, SIGKILL);
        }));
        killer->start();
        try {
            real.model.CreateFolders(u"Project"_s, {u"/f%1"_s.arg(i)}, u"m"_s);
            ++done;
        } catch (const Exception& failure) {
            ADD_FAILURE() << i << ": " << failure.GetMessage().toStdString();
        }
        killer->wait();
    }
    EXPECT_EQ(real.model.GetRepository(u"Project"_s).totalRevisions, done);
    EXPECT_EQ(real.model.GetChildren({u"Project"_s, u"/"_s}).size(), done);
}

TEST_F(RealModelTest, TwoConsolesShareOneServer)
{
    RealModel first(LocalOptions(server));
    RealModel second(LocalOptions(server));
    first.model.CreateRepository(u"one"_s, false);
    second.model.CreateRepository(u"two"_s, false);
    EXPECT_EQ(NamesOf(first.model.GetRepositories()), QStringList({u"one"_s, u"two"_s}));
    second.model.RenameRepository(u"one"_s, u"three"_s);
    EXPECT_THROW(first.model.DeleteRepository(u"one"_s), ComException);
    EXPECT_EQ(NamesOf(first.model.GetRepositories()), QStringList({u"three"_s, u"two"_s}));
}

TEST_F(RealModelTest, NoProviderIsLeftBehind)
{
    {
        RealModel real(LocalOptions(server));
        real.model.GetRepositories();
        EXPECT_EQ(ProvidersOf(server).size(), 1);
    }
    EXPECT_TRUE(ProvidersOf(server).isEmpty());
}

TEST_F(RealModelTest, AMissingOrUnusableProviderIsNamed)
{
    ChannelOptions missing = LocalOptions(server);
    missing.localProgram = server.Scratch(u"nothing-here"_s);
    EXPECT_THROW(RealModel(missing).model.Connect({}), ServerNotInstalledException);

    // A data folder that can't be one is an answer, not a silent end.
    QFile file(server.Scratch(u"file"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ChannelOptions unusable = LocalOptions(server);
    unusable.localArguments = {u"--data"_s, file.fileName()};
    RealModel real(unusable);
    try {
        real.model.Connect({});
        FAIL();
    } catch (const ComException& failure) {
        EXPECT_TRUE(failure.GetMessage().contains(file.fileName())) << failure.GetMessage().toStdString();
    }
}

} // namespace

} // namespace quenvolta::test
