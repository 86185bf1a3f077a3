#include "foundation/registry_accessor.h"
#include "provider/server_namespaces.h"
#include "provider/web/service_operation.h"
#include "web_fixture.h"

namespace quenvolta
{

namespace
{

constexpr std::uint32_t kStopped = 1;
constexpr std::uint32_t kStartPending = 2;
constexpr std::uint32_t kStopPending = 3;
constexpr std::uint32_t kRunning = 4;
constexpr auto kNotSignedIn = "Authentication failed"_L1;
constexpr std::uint32_t kProcessAborted = 1067;

class WebServiceTest : public WebFixture
{
protected:
    std::uint32_t State() { return Number(u"ServiceState"_s); }
    std::uint32_t ExitCode() { return Number(u"ExitCode"_s); }
    pid_t Leader() const { return Read(Folder().PidFile()).trimmed().toInt(); }
    /// "Listed", or what the client says instead.
    QString List(const QString& url, const QString& password = u"secret"_s) const
    {
        const Outcome outcome = Svn({u"list"_s, url}, password);
        return outcome.succeeded ? u"Listed"_s : outcome.output;
    }
};

TEST_F(WebServiceTest, ServesTheStockClientAsThePermissionsSay)
{
    Call(u"SetLoggingOptions"_s, {{u"EnableAccessLogging"_s, true}, {u"EnableOperationalLogging"_s, true}});
    Call(u"StartService"_s);
    EXPECT_EQ(State(), kRunning);
    EXPECT_EQ(ExitCode(), 0U);
    Repositories().Create(u"project"_s);
    EXPECT_TRUE(List(Url(u"project"_s)).contains(kNotSignedIn)) << "no user is known yet";

    LetAliceIn("r");
    EXPECT_EQ(List(Url(u"project"_s)), u"Listed"_s);
    EXPECT_TRUE(List(Url(u"project"_s), u"wrong"_s).contains(kNotSignedIn));
    const Outcome parent = Run(u"curl"_s, {u"-s"_s, u"-u"_s, u"alice:secret"_s, Url({})});
    EXPECT_TRUE(parent.output.contains("\"project/\""_L1)) << parent.output.toStdString();
    const QString copy = Scratch(u"copy"_s);
    ASSERT_TRUE(Svn({u"checkout"_s, Url(u"project"_s), copy}).succeeded);
    Write(copy + u"/file"_s, "content");
    ASSERT_TRUE(Svn({u"add"_s, copy + u"/file"_s}).succeeded);
    EXPECT_FALSE(Svn({u"commit"_s, u"-m"_s, u"not allowed"_s, copy}).succeeded);
    LetAliceIn("rw");
    EXPECT_TRUE(Svn({u"commit"_s, u"-m"_s, u"allowed"_s, copy}).succeeded);
    EXPECT_EQ(Repositories().Read(u"project"_s).youngestRevision, 1U);
    EXPECT_TRUE(Read(Folder().OperationalLog()).contains("alice project commit r1"));
    EXPECT_TRUE(Read(Folder().AccessLog()).contains("\"MERGE "));

    const Outcome legacy = Run(u"curl"_s, {u"-s"_s, u"-i"_s, u"http://127.0.0.1:%1/!/project/trunk"_s.arg(m_port)});
    EXPECT_TRUE(legacy.output.contains("/svn/project/trunk"_L1)) << legacy.output.toStdString();
    EXPECT_FALSE(legacy.output.contains("Apache/2"_L1)) << "the server tells its version";

    EXPECT_EQ(Refusal(u"StartService"_s).Code(), HResultFromWin32(1056));
    Call(u"StopService"_s);
    EXPECT_EQ(State(), kStopped);
    EXPECT_EQ(ExitCode(), 0U);
    EXPECT_EQ(Refusal(u"StopService"_s).Code(), HResultFromWin32(1062));
    EXPECT_FALSE(Svn({u"list"_s, Url(u"project"_s)}).succeeded);
}

TEST_F(WebServiceTest, ServesHttpsWithTheServersCertificate)
{
    EXPECT_TRUE(Refusal(u"SetNetworkOptions"_s, Network(true, m_port)).Description().contains(u"certificate"_s));
    EXPECT_EQ(Property(u"UseSecureConnection"_s), Variant(false));
    QDir(DataPath()).mkdir(u"certificates"_s);
    ASSERT_TRUE(Run(u"openssl"_s,
                    {u"req"_s, u"-x509"_s, u"-newkey"_s, u"rsa:2048"_s, u"-nodes"_s, u"-subj"_s, u"/CN=localhost"_s,
                     u"-keyout"_s, Folder().CertificateKey(), u"-out"_s, Folder().Certificate()})
                    .succeeded);
    LetAliceIn("r");
    Repositories().Create(u"project"_s);
    Call(u"StartService"_s);
    const pid_t leader = Leader();
    Call(u"SetNetworkOptions"_s, Network(true, m_port));
    EXPECT_EQ(List(Url(u"project"_s)), u"Listed"_s) << "settings wait for the restart";
    Call(u"RestartService"_s);
    EXPECT_EQ(List(u"https://127.0.0.1:%1/svn/project"_s.arg(m_port)), u"Listed"_s);
    EXPECT_EQ(Leader(), leader) << "a restart on the same addresses keeps busy connections";
    EXPECT_NE(List(Url(u"project"_s)), u"Listed"_s);
}

TEST_F(WebServiceTest, RefusalsLeaveTheServiceAndItsSettingsAsTheyAre)
{
    LetAliceIn("r");
    Repositories().Create(u"project"_s);
    Call(u"StartService"_s);
    const QByteArray configuration = Read(Folder().Configuration());

    const PortHolder other;
    const ProviderError inUse = Refusal(u"SetNetworkOptions"_s, Network(false, other.Port()));
    EXPECT_TRUE(inUse.Description().contains(u"Address already in use"_s)) << inUse.what();
    EXPECT_EQ(Number(u"UnsecurePort"_s), static_cast<std::uint32_t>(m_port));

    // Apache itself refuses a certificate that is none, whoever put it there.
    QDir(DataPath()).mkdir(u"certificates"_s);
    Write(Folder().Certificate(), "nonsense");
    Write(Folder().CertificateKey(), "nonsense");
    const ProviderError refused = Refusal(u"SetNetworkOptions"_s, Network(true, m_port));
    EXPECT_TRUE(refused.Description().contains(u"AH0"_s)) << refused.what();
    EXPECT_EQ(Property(u"UseSecureConnection"_s), Variant(false));

    // Settings that another program wrote are refused at the restart; the service goes on.
    RegistryAccessor values(m_data->Settings(), RegistryAccessor::kServerKey.toString());
    values.SetServerPort(false, other.Port());
    EXPECT_TRUE(Refusal(u"RestartService"_s).Description().contains(u"Address already in use"_s));
    values.SetServerPort(false, m_port);
    values.SetServerBindings({});
    EXPECT_TRUE(Refusal(u"RestartService"_s).Description().contains(u"empty"_s));
    EXPECT_EQ(Read(Folder().Configuration()), configuration);
    EXPECT_EQ(State(), kRunning);
    EXPECT_EQ(ExitCode(), 0U);
    EXPECT_EQ(List(Url(u"project"_s)), u"Listed"_s);
}

TEST_F(WebServiceTest, MovesToAnotherPortAndBackWhenThatFails)
{
    LetAliceIn("r");
    Repositories().Create(u"project"_s);
    Call(u"StartService"_s);
    const QString before = Url(u"project"_s);
    m_port = PortHolder::Free();
    Call(u"SetNetworkOptions"_s, Network(false, m_port));
    Call(u"RestartService"_s);
    EXPECT_EQ(List(Url(u"project"_s)), u"Listed"_s);
    EXPECT_NE(List(before), u"Listed"_s);

    // What only a true start finds out: httpd ends, and the configuration that was good serves again.
    Call(u"SetNetworkOptions"_s, Network(false, PortHolder::Free()));
    QFile::remove(Folder().ErrorLog());
    ASSERT_TRUE(QDir().mkdir(Folder().ErrorLog()));
    const ProviderError failure = Refusal(u"RestartService"_s);
    EXPECT_TRUE(failure.Description().contains(u"error.log"_s)) << failure.what();
    EXPECT_EQ(State(), kStopped) << "the former configuration could not start either";
    EXPECT_EQ(ExitCode(), kProcessAborted);
    QDir().rmdir(Folder().ErrorLog());
    Call(u"StartService"_s);
    EXPECT_EQ(State(), kRunning);
    EXPECT_EQ(ExitCode(), 0U);
}

TEST_F(WebServiceTest, TellsAStartThatFailsInApachesWordsAndItsExitCode)
{
    PortHolder other;
    RegistryAccessor(m_data->Settings(), RegistryAccessor::kServerKey.toString()).SetServerPort(false, other.Port());
    const ProviderError failure = Refusal(u"StartService"_s);
    EXPECT_TRUE(failure.Description().contains(u"AH00072"_s)) << failure.what();
    EXPECT_EQ(State(), kStopped);
    EXPECT_NE(ExitCode(), 0U);
}

TEST_F(WebServiceTest, AKilledServiceIsStoppedAndStartsAgain)
{
    LetAliceIn("r");
    Repositories().Create(u"project"_s);
    Call(u"StartService"_s);
    ASSERT_GT(Leader(), 1);
    ASSERT_EQ(::kill(Leader(), SIGKILL), 0);
    EXPECT_TRUE(Eventually([this] { return State() == kStopped; }));
    EXPECT_EQ(ExitCode(), kProcessAborted);
    Call(u"StartService"_s); // the children that were left hold the port
    EXPECT_EQ(State(), kRunning);
    EXPECT_EQ(ExitCode(), 0U);
    EXPECT_EQ(List(Url(u"project"_s)), u"Listed"_s);

    // A number in the pid file that means another process by now is not the service.
    Call(u"StopService"_s);
    Write(Folder().PidFile(), QByteArray::number(::getpid()));
    EXPECT_EQ(State(), kStopped);
    Call(u"StopService"_s);
    Call(u"StartService"_s);
    EXPECT_EQ(State(), kRunning);
}

// What the list of the computer's addresses offers can be chosen, also the addresses of one link.
TEST_F(WebServiceTest, ListensOnEveryAddressThatIsOffered)
{
    class Offered final : public RowSink
    {
    public:
        void AddInstance(const InstanceRow& row) override
        {
            Variant value;
            row.ToObject()->Get(u"IPAddress"_s, &value, nullptr);
            if (const auto* list = std::get_if<QStringList>(&value))
                addresses.append(*list);
        }
        void AddElement(const QString&, const InstanceRow&) override {}
        QStringList addresses{u"127.0.0.1"_s};
    } offered;
    const auto standard = MakeStandardNamespace(ServedVersion());
    CallContext context{standard->Classes(), offered, {}, {}};
    standard->EnumerateInstances(u"Win32_NetworkAdapterConfiguration"_s, context);
    Parameters network = Network(false, m_port);
    network.last().second = offered.addresses;
    Call(u"SetNetworkOptions"_s, network);
    Call(u"StartService"_s);
    for (const QString& address : std::as_const(offered.addresses)) {
        QString host = address;
        host.replace(u'%', "%25"_L1);
        const Outcome outcome = Run(
            u"curl"_s, {u"-s"_s, u"-o"_s, u"/dev/null"_s, u"-w"_s, u"%{http_code}"_s, u"--noproxy"_s, u"*"_s, u"-g"_s,
                        (host.contains(u':') ? u"http://[%1]:%2/svn/"_s : u"http://%1:%2/svn/"_s)
                            .arg(host, QString::number(m_port))});
        EXPECT_EQ(outcome.output, u"401"_s) << address.toStdString();
    }
    EXPECT_EQ(State(), kRunning);
}

TEST_F(WebServiceTest, OthersSeeWhatIsUnderWay)
{
    ASSERT_NO_THROW(Folder().Make());
    {
        const ServiceOperation starting(Folder(), ServiceOperation::Kind::Start, {});
        EXPECT_EQ(State(), kStartPending);
        const CancelCheck gone = [] { return true; };
        EXPECT_THROW(ServiceOperation(Folder(), ServiceOperation::Kind::Stop, gone), ProviderError);
    }
    {
        const ServiceOperation stopping(Folder(), ServiceOperation::Kind::Stop, {});
        EXPECT_EQ(State(), kStopPending);
    }
    EXPECT_EQ(State(), kStopped);
}

} // namespace

} // namespace quenvolta
