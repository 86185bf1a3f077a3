#include "foundation/server_not_installed_exception.h"
#include "foundation/simple_exception.h"
#include "model_test.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::ExpectCode;
using test::ExpectMessage;
using test::FailureOf;
using test::Operation;

namespace
{

class LifecycleTest : public test::ModelTest
{
protected:
    // Every code that means "no server here" names the computer.
    void ExpectNotInstalled()
    {
        ExpectMessage<ServerNotInstalledException>(u"Quenvolta Server is not installed on the local computer"_s,
                                                   [this] { model.Connect({}); });
        ExpectMessage<ServerNotInstalledException>(u"Quenvolta Server is not installed on the computer 'srv1'"_s,
                                                   [this] { model.Connect(u"srv1"_s); });
    }
};

struct VersionRow {
    QString version;
    std::uint32_t capabilities;
    std::uint32_t featureLevel;
};

TEST(CapabilityTest, FollowsTheServersVersion)
{
    const VersionRow rows[] = {
        {u"2.0"_s, 0, 0},
        {u"2.0.9"_s, 0, 0},
        {u"2.1"_s, 0x1, 0},
        {u"2.2"_s, 0x7, 0},
        {u"2.5.3"_s, 0x7, 0},
        {u"2.6.0"_s, 0x3F, 1},
        {u"2.7"_s, 0xFF, 2},
        {u"2.8"_s, 0x1FF, 2},
        {u"3.0"_s, 0xBFFF, 2},
        {u"3.1.4"_s, 0xBFFF, 2},
        {u"3.2.1"_s, 0x3FFFFF, 2},
        {u"3.3"_s, 0x7FFFFF, 2},
        {u"3.3.9-beta"_s, 0x7FFFFF, 2},
    };
    for (const VersionRow& row : rows) {
        SCOPED_TRACE(row.version.toStdString());
        test::VersionedModel versioned(row.version);
        for (std::uint32_t bit = 1; bit != 0; bit <<= 1)
            EXPECT_EQ(versioned.model.HasCapability(bit), (row.capabilities & bit) != 0) << std::hex << bit;
        EXPECT_EQ(versioned.model.GetFeatureLevel(), row.featureLevel);
        EXPECT_EQ(versioned.model.HasCapability(0xFFFFFFFF), row.capabilities != 0);
    }
}

TEST(CapabilityTest, RefusesNewerServersAndTextsThatAreNoVersion)
{
    for (const QString& version : {u"3.4"_s, u"4.0.1"_s, u"3.10"_s}) {
        test::VersionedModel versioned(version);
        ExpectMessage<SimpleException>(
            u"You are connecting to Quenvolta Server "_s + version +
                u". Quenvolta Server Manager 3.3.1 can manage Quenvolta Server 3.3 or older."_s,
            [&versioned] { versioned.model.Connect({}); });
        EXPECT_FALSE(versioned.model.IsConnected());
    }
    test::VersionedModel unreadable(u"3.3"_s);
    unreadable.server.data.versionInfo[u"Version"_s] = u"1.2.3.4.5"_s;
    ExpectMessage<SimpleException>(u"Cannot parse version string '1.2.3.4.5'. Number of groups exceeds 4."_s,
                                   [&unreadable] { unreadable.model.Connect({}); });
}

TEST_F(LifecycleTest, SaysThatTheServerIsNotInstalled)
{
    server.hasNamespace = false;
    ExpectNotInstalled();
    server.hasNamespace = true;
    server.Fail(Operation::GetObject, u"Quenvolta_VersionInfo"_s, {WBEM_E_INVALID_CLASS}, -1);
    ExpectNotInstalled();
    server.ClearFailures();
    server.data.versionInfo.remove(u"Version"_s);
    ExpectNotInstalled();
    server.data.versionInfo.clear();
    ExpectNotInstalled();

    server.Fail(Operation::Connect, {}, {RPC_S_SERVER_UNAVAILABLE});
    ExpectCode(RPC_S_SERVER_UNAVAILABLE, [this] { model.Connect(u"srv1"_s); });
    EXPECT_TRUE(preferences.servers.isEmpty());
}

TEST_F(LifecycleTest, OpensTheNamespaceOfTheComputerAndRemembersIt)
{
    const FileTime before = CurrentFileTime();
    model.Connect({});
    model.Connect(u"user@srv1:2222"_s);
    const QList<test::RecordedCall> connects = server.CallsOf(Operation::Connect);
    EXPECT_EQ(connects.value(0).path, u"\\\\.\\root\\Quenvolta");
    EXPECT_EQ(connects.value(1).path, u"\\\\user@srv1:2222\\root\\Quenvolta");
    EXPECT_EQ(preferences.servers, QStringList{u"user@srv1:2222"_s});
    EXPECT_GE(preferences.lastTime, before);
    EXPECT_TRUE(log.isEmpty());
}

TEST_F(LifecycleTest, ReadsNoClassBeforeItIsNeededAndEachOnce)
{
    model.Connect({});
    const auto classReads = [this] {
        QStringList names;
        for (const test::RecordedCall& call : server.CallsOf(Operation::GetObject)) {
            if (!call.path.contains(u'='))
                names.append(call.path);
        }
        return names;
    };
    EXPECT_EQ(classReads(), QStringList{u"__SystemClass"_s});
    model.CreateRepository(u"A"_s, true);
    model.CreateRepository(u"B"_s, true);
    EXPECT_EQ(classReads(), (QStringList{u"__SystemClass"_s, u"Quenvolta_Repository"_s}));
}

TEST_F(LifecycleTest, ConnectsWhenAnOperationNeedsTheServer)
{
    model.SetComputer(u"srv1"_s, true);
    EXPECT_TRUE(server.Calls().isEmpty());
    EXPECT_EQ(log, QStringList{u"computer"_s});
    EXPECT_EQ(model.ComputerName(), u"srv1");
    EXPECT_FALSE(model.IsConnected());

    server.Fail(Operation::Connect, {}, {RPC_S_SERVER_UNAVAILABLE, CreateErrorInfo(u"no route"_s)});
    ExpectMessage<ComException>(u"Cannot connect to WMI namespace '\\\\srv1\\root\\Quenvolta':\nno route"_s,
                                [this] { model.GetRepositories(); });
    EXPECT_TRUE(model.GetRepositories().isEmpty());
    EXPECT_TRUE(model.IsConnected());
    EXPECT_EQ(preferences.servers, QStringList{u"srv1"_s});

    model.Disconnect();
    EXPECT_FALSE(model.IsConnected());
    EXPECT_NO_THROW(model.GetUsers());
}

TEST_F(LifecycleTest, KeepsEverythingWhenAnotherComputerCannotBeReached)
{
    server.data.users = {u"ann"_s};
    model.SetComputer(u"srv1"_s, false);
    log.clear();
    server.Fail(Operation::Connect, u"\\\\srv2\\root\\Quenvolta"_s, {E_ACCESSDENIED});
    ExpectCode(E_ACCESSDENIED, [this] { model.SetComputer(u"srv2"_s, false); });
    EXPECT_EQ(model.ComputerName(), u"srv1");
    EXPECT_TRUE(model.IsConnected());
    EXPECT_TRUE(log.isEmpty());
    EXPECT_EQ(preferences.servers, QStringList{u"srv1"_s});
    server.ClearCalls();
    EXPECT_EQ(model.GetUsers(), server.data.users);
    EXPECT_TRUE(server.CallsOf(Operation::Connect).isEmpty());
}

TEST_F(LifecycleTest, HealsALostConnectionByItself)
{
    model.Connect({});
    server.DropConnections();
    EXPECT_NO_THROW(model.CreateRepository(u"A"_s, false));
    EXPECT_EQ(log, QStringList{u"created A"_s});
}

TEST_F(LifecycleTest, NotifiesInOrderAndStopsAtAnException)
{
    test::RecordingSubscriber second(log, u"2 "_s);
    test::RecordingSubscriber third(log, u"3 "_s);
    model.Subscribe(second);
    model.Subscribe(subscriber);
    model.Subscribe(third);
    model.CreateUser(u"a"_s, u"p"_s);
    EXPECT_EQ(log,
              (QStringList{u"user created a"_s, u"2 user created a"_s, u"user created a"_s, u"3 user created a"_s}));

    log.clear();
    second.onEvent = [] { throw SimpleException(u"from a view"); };
    ExpectMessage<SimpleException>(u"from a view"_s, [this] { model.CreateUser(u"b"_s, u"p"_s); });
    EXPECT_EQ(log, (QStringList{u"user created b"_s, u"2 user created b"_s}));
    EXPECT_EQ(model.GetUsers(), (QStringList{u"a"_s, u"b"_s}));
}

TEST_F(LifecycleTest, LetsSubscribersComeAndGoDuringANotification)
{
    test::RecordingSubscriber second(log, u"2 "_s);
    test::RecordingSubscriber late(log, u"late "_s);
    model.Subscribe(second);
    subscriber.onEvent = [&] {
        model.Unsubscribe(subscriber);
        model.Unsubscribe(second);
        model.Subscribe(late);
        if (log.size() == 1)
            model.CreateUser(u"nested"_s, u"p"_s);
    };
    model.CreateUser(u"a"_s, u"p"_s);
    EXPECT_EQ(log, (QStringList{u"user created a"_s, u"late user created nested"_s}));
    model.CreateUser(u"b"_s, u"p"_s);
    EXPECT_EQ(log.last(), u"late user created b");
    EXPECT_EQ(log.size(), 3);
}

} // namespace

} // namespace quenvolta
