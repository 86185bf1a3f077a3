#include "provider/web/apache_configuration.h"

#include <QUrl>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr char kApache[] = "apache2-bin";

constexpr ApacheModule kProcessing[] = {{"mpm_event", kApache}, {"mpm_worker", kApache}, {"mpm_prefork", kApache}};
constexpr ApacheModule kSecure{"ssl", kApache};
constexpr ApacheModule kPasswordFile{"authn_file", kApache};
constexpr ApacheModule kPam{"authnz_pam", "libapache2-mod-authnz-pam"};
constexpr ApacheModule kKerberos{"auth_gssapi", "libapache2-mod-auth-gssapi"};
constexpr ApacheModule kSlowClients{"reqtimeout", kApache};

// Everything here is the same for every server.
constexpr auto kFixed = R"(ServerTokens Prod
ServerSignature Off
TraceEnable Off
HostnameLookups Off
UseCanonicalName Off
FileETag None

# A commit may hold a connection for long, and send and ask for much.
Timeout 300
KeepAlive On
KeepAliveTimeout 15
MaxKeepAliveRequests 0
LimitRequestBody 0
LimitXMLRequestBody 67108864

SVNInMemoryCacheSize 65536
SVNUseUTF8 On

<Directory "/">
  AllowOverride None
  Options None
  Require all denied
</Directory>
<Location "/">
  Require all denied
</Location>

RedirectMatch 302 "^/$" "/svn/"
)"_L1;

constexpr auto kLegacyAddresses =
    R"(# The legacy web interface showed a repository's folder below /!/, where now the repository itself is.
RedirectMatch 301 "^/!/(.*)$" "/svn/$1"
)"_L1;

constexpr auto kSlowClientLimits = R"(# Whoever sends its request drop by drop must not hold a connection for ever.
RequestReadTimeout header=20-60,MinRate=500 body=60,MinRate=100
)"_L1;

constexpr auto kAccessFormat = "%h %l %u %t \"%r\" %>s %b \"%{Referer}i\" \"%{User-Agent}i\""_L1;
constexpr auto kOperationFormat = "%t %h %u %{SVN-REPOS-NAME}e %{SVN-ACTION}e"_L1;

// A name that isn't one of the Internet's isn't told: clients name the server themselves.
QString NameForHttpd(const QString& name)
{
    const QByteArray ascii = QUrl::toAce(name);
    return ascii.isEmpty() ? u"localhost"_s : QString::fromLatin1(ascii);
}

} // namespace

QList<ApacheModule> ApacheConfiguration::NeededModules()
{
    return {{"unixd", kApache},
            {"log_config", kApache},
            {"authn_core", kApache},
            {"authz_core", kApache},
            {"authz_user", kApache},
            {"auth_basic", kApache},
            {"alias", kApache},
            {"dav", kApache},
            {"dav_svn", "libapache2-mod-svn"},
            {"authz_svn", "libapache2-mod-svn"}};
}

ApacheConfiguration::ApacheConfiguration(const WebSettings& settings, const ApacheInstallation& installation,
                                         const WebFolder& folder)
    : m_settings(settings)
    , m_installation(installation)
    , m_folder(folder)
{
}

QByteArray ApacheConfiguration::Compose(const QList<ListenAddress>& addresses) const
{
    ConfigurationText text;
    AddModules(text);
    AddServer(text, addresses);
    text.AddFixed(kFixed);
    if (m_installation.Has(kSlowClients))
        text.AddFixed(kSlowClientLimits);
    if (m_settings.redirectLegacy)
        text.AddFixed(kLegacyAddresses);
    AddSecurity(text);
    AddLogs(text);
    AddRepositories(text);
    return text.Text().toUtf8();
}

QString ApacheConfiguration::Keytab() const
{
    if (!m_settings.systemAccounts || !m_settings.integrated)
        return {};
    return m_settings.keytab.isEmpty() ? m_folder.Keytab() : m_settings.keytab;
}

QList<ApacheModule> ApacheConfiguration::Modules() const
{
    QList<ApacheModule> modules = NeededModules();
    if (m_settings.secure)
        modules.append(kSecure);
    if (!m_settings.systemAccounts)
        modules.append(kPasswordFile);
    if (m_settings.systemAccounts && m_settings.basic)
        modules.append(kPam);
    if (m_settings.systemAccounts && m_settings.integrated)
        modules.append(kKerberos);
    return modules;
}

void ApacheConfiguration::AddModules(ConfigurationText& text) const
{
    QList<ApacheModule> modules = Modules();
    m_installation.Require(modules);
    if (m_installation.Has(kSlowClients))
        modules.append(kSlowClients);
    for (const ApacheModule& processing : kProcessing) {
        if (m_installation.Has(processing)) {
            modules.prepend(processing);
            break;
        }
    }
    for (const ApacheModule& module : std::as_const(modules)) {
        if (const QString file = m_installation.FileOf(module); !file.isEmpty())
            text.Add("LoadModule"_L1, {QLatin1StringView(module.identifier) + "_module"_L1, file});
    }
}

void ApacheConfiguration::AddServer(ConfigurationText& text, const QList<ListenAddress>& addresses) const
{
    text.Add("ServerRoot"_L1, {m_folder.Path()});
    text.Add("DefaultRuntimeDir"_L1, {m_folder.RunFolder()});
    text.Add("PidFile"_L1, {m_folder.PidFile()});
    text.Add("Mutex"_L1, {"file:"_L1 + m_folder.RunFolder(), u"default"_s});
    text.Add("ServerName"_L1, {NameForHttpd(m_settings.serverName)});
    for (const ListenAddress& address : addresses)
        text.Add("Listen"_L1, {address.Text()});
}

void ApacheConfiguration::AddSecurity(ConfigurationText& text) const
{
    if (!m_settings.secure)
        return;
    text.Add("SSLEngine"_L1, {u"on"_s});
    text.Add("SSLProtocol"_L1, {u"-all"_s, u"+TLSv1.2"_s, u"+TLSv1.3"_s});
    text.Add("SSLCertificateFile"_L1, {m_folder.Certificate()});
    text.Add("SSLCertificateKeyFile"_L1, {m_folder.CertificateKey()});
}

void ApacheConfiguration::AddLogs(ConfigurationText& text) const
{
    text.Add("ErrorLog"_L1, {m_folder.ErrorLog()});
    text.Add("LogLevel"_L1, {u"warn"_s});
    if (m_settings.accessLog)
        text.Add("CustomLog"_L1, {m_folder.AccessLog(), kAccessFormat});
    if (m_settings.operationalLog)
        text.Add("CustomLog"_L1, {m_folder.OperationalLog(), kOperationFormat, u"env=SVN-ACTION"_s});
}

void ApacheConfiguration::AddRepositories(ConfigurationText& text) const
{
    text.Open("Location"_L1, u"/svn"_s);
    text.Add("DAV"_L1, {u"svn"_s});
    text.Add("SVNParentPath"_L1, {m_settings.repositoriesRoot});
    text.Add("SVNListParentPath"_L1, {u"On"_s});
    text.Add("SVNPathAuthz"_L1, {u"short_circuit"_s});
    text.Add("AuthzSVNAccessFile"_L1, {m_folder.Permissions()});
    text.Add("AuthName"_L1, {u"Quenvolta Server"_s});
    AddAuthentication(text);
    // Also for what everyone may do: everyone is who can sign in.
    text.Add("Require"_L1, {u"valid-user"_s});
    text.Close();
}

void ApacheConfiguration::AddAuthentication(ConfigurationText& text) const
{
    if (!m_settings.systemAccounts || !m_settings.integrated) {
        AddPassword(text);
        return;
    }
    text.Add("AuthType"_L1, {u"GSSAPI"_s});
    text.Add("GssapiCredStore"_L1, {"keytab:"_L1 + Keytab()});
    text.Add("GssapiLocalName"_L1, {m_settings.upnFormat ? u"Off"_s : u"On"_s});
    if (!m_settings.basic)
        return;
    // The module offers both ways to sign in; a password that comes is checked by the system, not by Kerberos alone.
    text.Add("GssapiBasicAuth"_L1, {u"On"_s});
    text.Open("If"_L1, u"%{HTTP:Authorization} =~ /^Basic/i"_s);
    AddPassword(text);
    text.Close();
}

void ApacheConfiguration::AddPassword(ConfigurationText& text) const
{
    text.Add("AuthType"_L1, {u"Basic"_s});
    if (m_settings.systemAccounts) {
        text.Add("AuthBasicProvider"_L1, {u"PAM"_s});
        text.Add("AuthPAMService"_L1, {m_settings.pamService});
    } else {
        text.Add("AuthBasicProvider"_L1, {u"file"_s});
        text.Add("AuthUserFile"_L1, {m_folder.Users()});
    }
}

} // namespace quenvolta
