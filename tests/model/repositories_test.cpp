#include "foundation/wmi_client_exception.h"
#include "model_test.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::ExpectCode;
using test::ExpectMessage;
using test::Operation;

namespace
{

class RepositoriesTest : public test::ModelTest
{
};

TEST_F(RepositoriesTest, ReadsRecordsInTheServersOrder)
{
    server.data.repositories = {{.name = u"z"_s, .revisions = 7},
                                {.name = u"a"_s, .type = 2, .masterServer = u"m"_s, .masterRepository = u"r"_s},
                                {.name = u"b"_s, .type = std::nullopt, .revisions = std::nullopt}};
    server.data.permissions[{u"z"_s, u"/"_s}] = {{u"Quenvolta_User"_s, u"ann"_s, 1}};
    const QList<RepositoryInfo> repositories = model.GetRepositories();
    ASSERT_EQ(repositories.size(), 3);
    EXPECT_EQ(repositories[0], (RepositoryInfo{.name = u"z"_s,
                                               .url = u"https://srv1/svn/z"_s,
                                               .type = kRepositoryTypeFsfs,
                                               .totalRevisions = 7,
                                               .permissionState = PermissionState::Explicit}));
    EXPECT_EQ(repositories[1].type, kRepositoryTypeQdfsSlave);
    EXPECT_EQ(repositories[1].permissionState, PermissionState::InheritedOnly);
    EXPECT_EQ(repositories[1].masterServer, u"m"_s);
    EXPECT_EQ(repositories[1].masterRepository, u"r"_s);
    EXPECT_EQ(repositories[2].type, std::nullopt);
    EXPECT_EQ(repositories[2].totalRevisions, std::nullopt);
    EXPECT_EQ(repositories[2].masterServer, std::nullopt);
    EXPECT_EQ(model.GetRepository(u"a"_s), repositories[1]);
}

TEST(OldServerTest, ReadsOnlyWhatTheServerHas)
{
    for (const bool permissions : {false, true}) {
        test::VersionedModel old(permissions ? u"2.6"_s : u"2.0"_s);
        old.server.data.repositories = {{.name = u"a"_s, .type = 2, .entries = {{u"/x"_s, false}}}};
        const RepositoryInfo info = old.model.GetRepositories().value(0);
        EXPECT_EQ(info.type, std::nullopt);
        EXPECT_EQ(info.totalRevisions, std::nullopt);
        EXPECT_EQ(info.masterServer, std::nullopt);
        const PermissionState state = permissions ? PermissionState::InheritedOnly : PermissionState::Unknown;
        EXPECT_EQ(info.permissionState, state);
        EXPECT_EQ(old.model.GetChildren({u"a"_s, u"/"_s}).value(0).permissionState, state);
        const ServerSettings settings = old.model.GetServerSettings();
        EXPECT_EQ(settings.integratedAuthentication, permissions);
        EXPECT_TRUE(settings.basicAuthentication);
        EXPECT_EQ(settings.domainController, KnownState::Unknown);
        EXPECT_EQ(settings.redirectFromLegacyWebInterface, KnownState::Unknown);
    }
    test::VersionedModel old(u"2.5"_s);
    // The server has no such class.
    ExpectCode(WBEM_E_INVALID_CLASS, [&old] { old.model.GetQdfsServiceState(); });
}

TEST_F(RepositoriesTest, ReadsEntries)
{
    server.data.repositories = {{.name = u"a \"b\""_s,
                                 .entries = {{u"/trunk"_s, true},
                                             {u"/trunk/f"_s, false},
                                             {u"/trunk/sub"_s, true},
                                             {u"/trunk/sub/deep"_s, true},
                                             {u"/trunk2"_s, true}}}};
    const QList<RepositoryEntryInfo> entries = model.GetChildren({u"a \"b\""_s, u"/trunk"_s});
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries[0], (RepositoryEntryInfo{.repositoryName = u"a \"b\""_s,
                                               .path = u"/trunk/f"_s,
                                               .name = u"f"_s,
                                               .parentPath = u"/trunk"_s,
                                               .url = u"https://srv1/svn/a \"b\"/trunk/f"_s,
                                               .kind = EntryKind::File,
                                               .permissionState = PermissionState::InheritedOnly}));
    EXPECT_EQ(entries[1].kind, EntryKind::Folder);
    ExpectCode(WBEM_E_NOT_FOUND, [this] { model.GetChildren({u"none"_s, u"/"_s}); });

    // The root has no parent, and the server says so with null.
    server.Handle(u"Quenvolta_Repository"_s, u"GetChildren"_s, [this](test::MethodContext& call) {
        return call.out->Put(u"Children"_s,
                             QList<WbemObjectPtr>{server.EntryObject(server.data.repositories.first(), u"/"_s)});
    });
    const RepositoryEntryInfo root = model.GetChildren({u"a \"b\""_s, u"/"_s}).value(0);
    EXPECT_TRUE(root.parentPath.isEmpty());
    EXPECT_EQ(root.path, u"/");
    EXPECT_EQ(model.GetUrl({u"a \"b\""_s, u"/trunk"_s}), u"https://srv1/svn/a \"b\"/trunk");
    EXPECT_EQ(model.GetUrl({}), u"https://srv1/svn/");
}

TEST_F(RepositoriesTest, TellsAMissingRepositoryFromAFailure)
{
    server.data.repositories.append({.name = u"a"_s});
    EXPECT_TRUE(model.RepositoryExists(u"a"_s));
    EXPECT_FALSE(model.RepositoryExists(u"b"_s));
    ExpectCode(WBEM_E_NOT_FOUND, [this] { model.GetRepository(u"b"_s); });
    server.Fail(Operation::GetObject, u"Quenvolta_Repository"_s, {E_ACCESSDENIED});
    ExpectCode(E_ACCESSDENIED, [this] { model.RepositoryExists(u"b"_s); });
}

TEST_F(RepositoriesTest, BuildsUrlsFromTheSettings)
{
    struct Row {
        bool secure;
        std::uint32_t httpPort;
        std::uint32_t httpsPort;
        QString url;
    };
    const Row rows[] = {{true, 8080, 443, u"https://srv1/svn/My Project"_s},
                        {true, 80, 8443, u"https://srv1:8443/svn/My Project"_s},
                        {true, 80, 80, u"https://srv1:80/svn/My Project"_s},
                        {false, 80, 8443, u"http://srv1/svn/My Project"_s},
                        {false, 8080, 443, u"http://srv1:8080/svn/My Project"_s},
                        {false, 443, 443, u"http://srv1:443/svn/My Project"_s}};
    server.data.service[u"UseCustomServerName"_s] = true;
    server.data.service[u"CustomServerName"_s] = u"custom"_s;
    for (const Row& row : rows) {
        server.data.service[u"UseSecureConnection"_s] = row.secure;
        server.data.service[u"UnsecurePort"_s] = row.httpPort;
        server.data.service[u"SecurePort"_s] = row.httpsPort;
        EXPECT_EQ(model.BuildRepositoryUrl(u"My Project"_s), row.url);
    }
}

TEST_F(RepositoriesTest, CreatesWithStructure)
{
    model.CreateRepository(u"plain"_s, false);
    model.CreateRepository(u"full"_s, true);
    model.CreateQdfsMaster(u"master"_s, true);
    model.CreateQdfsSlave(u"slave"_s, u"srv2"_s, u"master"_s);
    EXPECT_EQ(log, (QStringList{u"created plain"_s, u"created full"_s, u"created master"_s, u"created slave"_s}));
    const QList<test::RecordedCall> commits = server.CallsOf(u"CreateFolders"_s);
    ASSERT_EQ(commits.size(), 2);
    EXPECT_EQ(commits[0].in.value(u"Folders"_s), Variant(QStringList{u"trunk"_s, u"branches"_s, u"tags"_s}));
    EXPECT_EQ(commits[0].in.value(u"Message"_s), Variant(u"Initial structure."_s));
    EXPECT_EQ(model.GetRepository(u"slave"_s).masterServer, u"srv2"_s);
    EXPECT_EQ(model.GetRepository(u"master"_s).type, kRepositoryTypeQdfsMaster);
}

TEST_F(RepositoriesTest, AnnouncesARepositoryWhoseStructureFailed)
{
    server.Fail(Operation::ExecMethod, u"CreateFolders"_s, {WBEM_E_FAILED, server.ExtendedError(u"no space"_s)});
    bool announcedFirst = false;
    subscriber.onEvent = [&] { announcedFirst = true; };
    ExpectMessage<WMIClientException>(u"no space"_s, [this] { model.CreateRepository(u"a"_s, true); });
    EXPECT_TRUE(announcedFirst);
    EXPECT_EQ(log, QStringList{u"created a"_s});

    // One that wasn't created is not announced.
    ExpectMessage<WMIClientException>(u"The repository already exists."_s,
                                      [this] { model.CreateRepository(u"a"_s, true); });
    EXPECT_EQ(log.size(), 1);
}

TEST_F(RepositoriesTest, ChangesAreAnnouncedAfterSuccessOnly)
{
    server.data.repositories = {{.name = u"a"_s}, {.name = u"b"_s}};
    model.RenameRepository(u"a"_s, u"c"_s);
    ExpectCode(WBEM_E_ALREADY_EXISTS, [this] { model.RenameRepository(u"c"_s, u"b"_s); });
    model.DeleteRepository(u"b"_s);
    ExpectCode(WBEM_E_NOT_FOUND, [this] { model.DeleteRepository(u"b"_s); });
    EXPECT_EQ(model.ConvertToQdfs(u"c"_s), 0U);
    server.Handle(u"Quenvolta_Repository"_s, u"ConvertToFsfs"_s,
                  [](test::MethodContext& call) { return call.out->Put(u"ReturnValue"_s, 5U); });
    EXPECT_EQ(model.ConvertToFsfs(u"c"_s), 5U);
    model.CreateFolders(u"c"_s, {u"/x"_s, u"/x/y"_s}, u"m"_s);
    model.DeleteFolders(u"c"_s, {u"/x/y"_s}, u"m"_s);
    model.Upgrade(u"c"_s);
    model.ChangeMasterTo(u"c"_s, u"s"_s, u"r"_s);
    model.TestQdfsConnection(u"s"_s, u"r"_s);
    EXPECT_TRUE(model.SupportsMergeinfo(u"c"_s));
    EXPECT_EQ(model.GetImportSourceType(u"/p"_s), 0U);
    EXPECT_EQ(log, (QStringList{u"renamed a c"_s, u"deleted b"_s, u"converted c"_s}));
    EXPECT_EQ(server.data.repositories.first().entries.keys(), QStringList{u"/x"_s});
    EXPECT_EQ(server.data.repositories.first().masterServer, u"s");
}

TEST_F(RepositoriesTest, ReadsTheServersStates)
{
    server.data.service[u"ServiceState"_s] = 1U;
    server.data.service[u"ExitCode"_s] = 1067U;
    server.data.service[u"AuthType"_s] = 1U;
    server.data.service[u"ListenAllIPAddresses"_s] = false;
    server.data.service[u"ListenIPAddressesArray"_s] = QStringList{u"::1"_s};
    server.data.qdfsService[u"StartMode"_s] = kStartModeDisabled;
    const ServerStatus status = model.GetServerStatus();
    EXPECT_EQ(status.serviceState, 1U);
    EXPECT_EQ(status.settings, model.GetServerSettings());
    EXPECT_TRUE(status.settings.windowsAuthentication);
    EXPECT_TRUE(status.settings.listenOnSelectedAddresses);
    EXPECT_EQ(status.settings.listenAddresses, QStringList{u"::1"_s});
    EXPECT_EQ(status.settings.domainController, KnownState::No);
    EXPECT_EQ(status.settings.redirectFromLegacyWebInterface, KnownState::Yes);
    EXPECT_EQ(model.GetHttpServiceState(), 1U);
    EXPECT_EQ(model.GetHttpServiceExitState().exitCode, 1067U);
    EXPECT_EQ(model.GetQdfsServiceState().startMode, kStartModeDisabled);
    EXPECT_EQ(model.GetQdfsServiceExitState().state, 4U);
    EXPECT_EQ(model.GetServerVersionInfo().subversionVersion, u"1.14.2");

    server.data.adapters = {QStringList{u"10.0.0.1"_s, u"::1"_s}, std::nullopt, QStringList{u"10.0.0.1"_s}};
    EXPECT_EQ(model.GetServerIpAddresses(), (QStringList{u"10.0.0.1"_s, u"::1"_s, u"10.0.0.1"_s}));
    EXPECT_EQ(server.CallsOf(Operation::Connect).last().path, u"\\\\.\\root\\CIMV2");
}

} // namespace

} // namespace quenvolta
