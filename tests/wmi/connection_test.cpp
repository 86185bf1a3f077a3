#include "foundation/wmi_client_exception.h"
#include "platform/wbem/proxy_blanket.h"
#include "support/expect_failure.h"
#include "support/stand_in_server.h"
#include "wmi/object_paths.h"
#include "wmi/wmi_class_cache.h"
#include "wmi/wmi_connection.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::ExpectCode;
using test::ExpectMessage;
using test::Operation;

namespace
{

const QString kNamespace = u"\\\\srv1\\root\\Quenvolta"_s;
const QString kCannotConnect = u"Cannot connect to WMI namespace '\\\\srv1\\root\\Quenvolta':\n"_s;
const QString kRepository = u"Quenvolta_Repository"_s;

class ConnectionTest : public testing::Test
{
protected:
    WMIConnection Connect(std::uint32_t level = RPC_C_IMP_LEVEL_DELEGATE)
    {
        return WMIConnection::Connect(server.LocatorFactory(), kNamespace, level);
    }

    // Creates a repository through the connection.
    static void Create(WMIConnection& connection, const QString& name)
    {
        WMIObject in = connection.GetClass(kRepository).GetMethodParameters(u"Create"_s);
        in.PutString(u"Name"_s, name);
        connection.ExecMethod(kRepository, u"Create"_s, in);
    }

    qsizetype Count(Operation operation) const { return server.CallsOf(operation).size(); }

    test::StandInServer server;
};

TEST_F(ConnectionTest, OpensAndProbesOnceWhenDelegationIsAllowed)
{
    const WMIConnection connection = Connect();
    EXPECT_EQ(connection.NamespacePath(), kNamespace);
    EXPECT_EQ(Count(Operation::Connect), 1);
    EXPECT_EQ(server.CallsOf(Operation::GetObject).value(0).path, u"__SystemClass");
}

TEST_F(ConnectionTest, DoesNotProbeAtTheImpersonateLevel)
{
    server.impersonateProbeCode = E_ACCESSDENIED;
    Connect(RPC_C_IMP_LEVEL_IMPERSONATE);
    EXPECT_EQ(Count(Operation::GetObject), 0);
}

TEST_F(ConnectionTest, FallsBackToImpersonationWithoutASecondProbeWhenDelegationIsRefused)
{
    server.delegateProbeCode = RPC_S_SEC_PKG_ERROR;
    server.impersonateProbeCode = E_ACCESSDENIED; // would fail a second probe
    const WMIConnection connection = Connect();
    EXPECT_EQ(connection.ImpersonationLevel(), RPC_C_IMP_LEVEL_DELEGATE);
    EXPECT_EQ(Count(Operation::Connect), 2);
    EXPECT_EQ(Count(Operation::GetObject), 1);
}

TEST_F(ConnectionTest, FallsBackToImpersonationWithASecondProbeAfterAnotherFailure)
{
    server.delegateProbeCode = E_ACCESSDENIED;
    Connect();
    EXPECT_EQ(Count(Operation::Connect), 2);
    EXPECT_EQ(Count(Operation::GetObject), 2);

    server.impersonateProbeCode = WBEM_E_ACCESS_DENIED;
    ExpectMessage<ComException>(kCannotConnect + u"WMI access denied."_s, [this] { Connect(); });
}

TEST_F(ConnectionTest, SaysWhichStepOfConnectingFailed)
{
    server.Fail(Operation::Connect, kNamespace,
                {RPC_S_SERVER_UNAVAILABLE, CreateErrorInfo(u"ssh: could not resolve hostname srv1"_s)});
    ExpectMessage<ComException>(kCannotConnect + u"ssh: could not resolve hostname srv1"_s, [this] { Connect(); });
    // Words of an earlier failure are not shown with the next one.
    SetErrorInfo(CreateErrorInfo(u"stale"_s));
    server.hasNamespace = false;
    const auto failure = test::FailureOf<ComException>([this] { Connect(); });
    EXPECT_EQ(failure->Code(), WBEM_E_INVALID_NAMESPACE);
    EXPECT_FALSE(failure->ErrorInformation());
    server.hasNamespace = true;

    server.setBlanketCode = WBEM_E_ACCESS_DENIED;
    ExpectMessage<ComException>(u"Cannot elevate impersonation level:\nWMI access denied."_s, [this] { Connect(); });
    server.queryBlanketCode = WBEM_E_ACCESS_DENIED;
    ExpectMessage<ComException>(u"Cannot query proxy blanket:\nWMI access denied."_s, [this] { Connect(); });
    server.locatorCode = WBEM_E_ACCESS_DENIED;
    ExpectMessage<ComException>(u"Cannot create WMI locator:\nWMI access denied."_s, [this] { Connect(); });
}

TEST_F(ConnectionTest, ReconnectsOnceUnderTheSameRequestIdentifier)
{
    WMIConnection connection = Connect();
    WMIClassCache cache(kRepository, connection);
    const WMIClass& definition = cache.GetClass();
    // The server does the work and dies before it answers.
    server.Fail(Operation::ExecMethod, u"Create"_s, {.code = RPC_E_DISCONNECTED, .afterWork = true});
    Create(connection, u"A"_s);
    ASSERT_EQ(server.data.repositories.size(), 1);
    const QList<test::RecordedCall> calls = server.CallsOf(u"Create"_s);
    ASSERT_EQ(calls.size(), 2);
    EXPECT_FALSE(calls[0].requestId.isNull());
    EXPECT_EQ(calls[0].requestId, calls[1].requestId);
    EXPECT_EQ(calls[0].in, calls[1].in);
    EXPECT_NE(calls[0].connection, calls[1].connection);

    Create(connection, u"B"_s);
    EXPECT_NE(server.CallsOf(u"Create"_s).last().requestId, calls[0].requestId);
    EXPECT_EQ(&cache.GetClass(), &definition);
    EXPECT_EQ(definition.GetClassName(), kRepository);
}

TEST_F(ConnectionTest, ReconnectsForEveryKindOfCall)
{
    server.data.users = {u"ann"_s};
    WMIConnection connection = Connect();
    for (const bool identified : {true, false}) {
        server.withoutRequestIdentity = !identified;
        const std::function<void()> kinds[] = {
            [&] { connection.GetObject(u"Quenvolta_VersionInfo=@"_s); },
            [&] { connection.GetClass(kRepository); },
            [&] { connection.EnumerateInstances(u"Quenvolta_User"_s); },
            [&] { connection.ExecMethod(kRepository, u"GetGlobalSecurity"_s); },
            [&] {
                connection.ExecMethodAsync(u"Quenvolta_Service.Name=\"QuenvoltaServer\""_s, u"StopService"_s, {},
                                           WMIConnection::CreateContext());
            },
        };
        for (const auto& call : kinds) {
            const qsizetype before = Count(Operation::Connect);
            server.DropConnections();
            EXPECT_NO_THROW(call());
            EXPECT_EQ(Count(Operation::Connect), before + 1);
        }
    }
}

TEST_F(ConnectionTest, RepeatsACallOnceOnly)
{
    WMIConnection connection = Connect();
    server.Fail(Operation::ExecMethod, u"Create"_s, {RPC_E_DISCONNECTED, CreateErrorInfo(u"first"_s)});
    server.Fail(Operation::ExecMethod, u"Create"_s, {RPC_E_DISCONNECTED, CreateErrorInfo(u"second"_s)});
    ExpectMessage<ComException>(u"second"_s, [&] { Create(connection, u"A"_s); });
    EXPECT_EQ(server.CallsOf(u"Create"_s).size(), 2);

    // Neither does the failed reconnection lose the connection's ability to heal.
    server.DropConnections();
    server.Fail(Operation::Connect, {}, {RPC_S_SERVER_UNAVAILABLE});
    ExpectCode(RPC_S_SERVER_UNAVAILABLE, [&] { connection.GetClass(kRepository); });
    EXPECT_NO_THROW(Create(connection, u"A"_s));
}

TEST_F(ConnectionTest, ToleratesAMissingObjectOnlyWhenAsked)
{
    WMIConnection connection = Connect();
    const QString path = BuildObjectPath(kRepository, u"None"_s);
    EXPECT_TRUE(connection.GetObject(path, true).IsEmpty());
    ExpectCode(WBEM_E_NOT_FOUND, [&] { connection.GetObject(path); });
    server.Fail(Operation::GetObject, kRepository, {E_ACCESSDENIED});
    ExpectCode(E_ACCESSDENIED, [&] { connection.GetObject(path, true); });
}

TEST_F(ConnectionTest, AddressesInstancesWhoseKeysHoldQuotesAndBackslashes)
{
    const QString name = u"a\"b\\c=\"@,d"_s;
    server.data.repositories.append({name});
    WMIConnection connection = Connect();
    EXPECT_EQ(connection.GetObject(BuildObjectPath(kRepository, name)).GetString(u"Name"_s), name);
    EXPECT_EQ(BuildObjectPath(u"Quenvolta_RepositoryEntry"_s, {{u"RepositoryName"_s, u"r"_s}, {u"Path"_s, u"/"_s}}),
              u"Quenvolta_RepositoryEntry.RepositoryName=\"r\",Path=\"/\"");
}

TEST_F(ConnectionTest, RaisesTheServersExtendedErrors)
{
    WMIConnection connection = Connect();
    server.Fail(Operation::ExecMethod, u"Create"_s,
                {WBEM_E_FAILED, server.ExtendedError(u"Description"_s, u"Summary"_s, u"Details"_s, 3)});
    const auto failure = test::FailureOf<WMIClientException>([&] { Create(connection, u"A"_s); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->Code(), WBEM_E_FAILED);
    EXPECT_EQ(failure->GetMessage(), u"Description");
    EXPECT_EQ(failure->Summary(), u"Summary");
    EXPECT_EQ(failure->Details(), u"Details");
    EXPECT_EQ(failure->ProbableReason(), 3);

    // An error object of another class: its description counts. An incomplete one: the failure to read it.
    auto other = std::make_shared<WbemErrorObject>(ClassTable(u"CIMV2"_s, {3, 3}).Find(u"Win32_Group"_s));
    other->Put(u"Description"_s, u"Another class"_s);
    server.Fail(Operation::ExecMethod, u"Create"_s, {WBEM_E_FAILED, other});
    ExpectMessage<ComException>(u"Another class"_s, [&] { Create(connection, u"A"_s); });
    server.Fail(Operation::ExecMethod, u"Create"_s,
                {WBEM_E_FAILED, std::make_shared<WbemErrorObject>(
                                    ClassTable(u"Quenvolta"_s, {3, 3}).Find(u"Quenvolta_ExtendedError"_s))});
    ExpectCode(WBEM_E_NOT_FOUND, [&] { Create(connection, u"A"_s); });

    // A later failure without words isn't shown with old ones.
    SetErrorInfo(CreateErrorInfo(u"stale"_s));
    server.Fail(Operation::ExecMethod, u"Create"_s, {E_ACCESSDENIED});
    ExpectMessage<ComException>(u"Access is denied. (0x80070005)"_s, [&] { Create(connection, u"A"_s); });
}

TEST_F(ConnectionTest, ReadsLongListsToTheirEnd)
{
    for (int i = 0; i < 512; ++i) // two whole chunks: the end comes with an empty one
        server.data.users.append(QString::number(i));
    WMIConnection connection = Connect();
    WMIEnumerator users = connection.EnumerateInstances(u"Quenvolta_User"_s);
    QStringList names;
    for (WMIObject user; users.Next(&user);)
        names.append(user.GetString(u"Name"_s));
    EXPECT_EQ(names, server.data.users);
    WMIObject user;
    EXPECT_FALSE(users.Next(&user));

    server.Fail(Operation::ReadInstances, u"Quenvolta_User"_s,
                {RPC_E_DISCONNECTED, CreateErrorInfo(u"The provider ended"_s)}, 1, 1);
    WMIEnumerator cut = connection.EnumerateInstances(u"Quenvolta_User"_s);
    const auto failure = test::FailureOf<ComException>([&cut] {
        for (WMIObject each; cut.Next(&each);) {
        }
    });
    EXPECT_EQ(failure->Code(), RPC_E_DISCONNECTED);
    EXPECT_EQ(failure->GetMessage(), u"The provider ended");
}

TEST_F(ConnectionTest, ReadsAClassOnceAndAgainOnlyAfterAFailure)
{
    WMIConnection connection = Connect();
    WMIClassCache cache(kRepository, connection);
    server.ClearCalls();
    server.Fail(Operation::GetObject, kRepository, {E_ACCESSDENIED});
    ExpectCode(E_ACCESSDENIED, [&cache] { cache.GetClass(); });
    cache.GetClass();
    cache.GetClass();
    EXPECT_EQ(Count(Operation::GetObject), 2);
}

TEST_F(ConnectionTest, StartsACallThatIsAskedForItsOutcome)
{
    server.holdAsyncCalls = true;
    WMIConnection connection = Connect();
    const WbemContextPtr context = WMIConnection::CreateContext();
    WMIConnection::SetContextValue(context, u"ActivityId"_s, u"{id}"_s);
    WMIObject in = connection.GetClass(kRepository).GetMethodParameters(u"ImportRepository"_s);
    in.PutString(u"Name"_s, u"A"_s);
    const WbemCallResultPtr result = connection.ExecMethodAsync(kRepository, u"ImportRepository"_s, in, context);
    HRESULT status = S_OK;
    EXPECT_EQ(result->GetCallStatus(0, &status), WBEM_S_TIMEDOUT);
    EXPECT_EQ(server.CallsOf(u"ImportRepository"_s).value(0).activityId, u"{id}");

    WMIObject cancel = connection.GetClass(u"Quenvolta_Activity"_s).GetMethodParameters(u"Cancel"_s);
    cancel.PutString(u"Id"_s, u"{id}"_s);
    connection.ExecMethod(u"Quenvolta_Activity"_s, u"Cancel"_s, cancel);
    EXPECT_EQ(result->GetCallStatus(0, &status), S_OK);
    EXPECT_EQ(status, WBEM_E_CALL_CANCELLED);
    EXPECT_TRUE(server.data.repositories.isEmpty());
}

} // namespace

} // namespace quenvolta
