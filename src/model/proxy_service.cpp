#include "model/server_proxy.h"
#include "platform/wbem/proxy_blanket.h"
#include "wmi/object_paths.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::uint32_t kWindowsAuthentication = 1;

KnownState ReadKnownState(const WMIObject& object, const QString& name)
{
    return object.GetBool(name) ? KnownState::Yes : KnownState::No;
}

ServiceExitState ReadExitState(const WMIObject& service)
{
    return {service.GetUInt32(u"ExitCode"_s), service.GetUInt32(u"ServiceState"_s)};
}

} // namespace

QString CServerProxy::ServicePath() const
{
    return BuildObjectPath(m_classes.service.ClassName(), u"QuenvoltaServer"_s);
}

QString CServerProxy::QdfsServicePath() const
{
    return BuildObjectPath(m_classes.qdfsService.ClassName(), u"qdfssvc"_s);
}

WMIObject CServerProxy::GetService()
{
    return m_connection.GetObject(ServicePath());
}

WMIObject CServerProxy::GetQdfsService()
{
    return m_connection.GetObject(QdfsServicePath());
}

ServerSettings CServerProxy::ReadSettings(const WMIObject& service) const
{
    ServerSettings settings;
    settings.repositoriesRoot = service.GetString(u"RepositoriesRoot"_s);
    settings.adjustRepositoriesRootPermissions = service.GetBool(u"AdjustRepositoriesRootPermissions"_s);
    settings.serverName = service.GetString(u"ServerName"_s);
    settings.useCustomServerName = service.GetBool(u"UseCustomServerName"_s);
    settings.customServerName = service.GetString(u"CustomServerName"_s);
    if (HasCapability(ServerCapability::kDomainController))
        settings.domainController = ReadKnownState(service, u"IsDomainController"_s);
    settings.useSecureConnection = service.GetBool(u"UseSecureConnection"_s);
    settings.unsecurePort = service.GetUInt32(u"UnsecurePort"_s);
    settings.securePort = service.GetUInt32(u"SecurePort"_s);
    settings.windowsAuthentication = service.GetUInt32(u"AuthType"_s) == kWindowsAuthentication;
    if (HasCapability(ServerCapability::kAuthenticationParameters)) {
        settings.basicAuthentication = service.GetBool(u"AuthWindowsBasic"_s);
        settings.integratedAuthentication = service.GetBool(u"AuthWindowsIntegrated"_s);
    }
    settings.useUpnFormat = service.GetBool(u"UseUPNFormat"_s);
    settings.listenOnSelectedAddresses = !service.GetBool(u"ListenAllIPAddresses"_s);
    settings.listenAddresses = service.GetStringArray(u"ListenIPAddressesArray"_s);
    settings.url = service.GetString(u"URL"_s);
    settings.accessLogging = service.GetBool(u"AccessLoggingEnabled"_s);
    settings.operationalLogging = service.GetBool(u"OperationalLoggingEnabled"_s);
    if (HasCapability(ServerCapability::kLegacyRedirect))
        settings.redirectFromLegacyWebInterface = ReadKnownState(service, u"RedirectFromLegacyWebInterface"_s);
    return settings;
}

ServerSettings CServerProxy::GetServerSettings()
{
    return ReadSettings(GetService());
}

ServerStatus CServerProxy::GetServerStatus()
{
    const WMIObject service = GetService();
    return {ReadSettings(service), service.GetUInt32(u"ServiceState"_s)};
}

std::uint32_t CServerProxy::GetHttpServiceState()
{
    return GetService().GetUInt32(u"ServiceState"_s);
}

ServiceExitState CServerProxy::GetHttpServiceExitState()
{
    return ReadExitState(GetService());
}

ServiceStatus CServerProxy::GetQdfsServiceState()
{
    const WMIObject service = GetQdfsService();
    return {service.GetUInt32(u"ServiceState"_s), service.GetUInt32(u"StartMode"_s)};
}

ServiceExitState CServerProxy::GetQdfsServiceExitState()
{
    return ReadExitState(GetQdfsService());
}

WMIConnection CServerProxy::OpenStandardNamespace() const
{
    return WMIConnection::Connect(m_locatorFactory, m_rootPath + "\\CIMV2"_L1, RPC_C_IMP_LEVEL_IMPERSONATE);
}

std::unique_ptr<CComputerDirectory> CServerProxy::OpenComputerDirectory() const
{
    return std::make_unique<CComputerDirectory>(OpenStandardNamespace());
}

QStringList CServerProxy::GetServerIpAddresses()
{
    WMIConnection connection = OpenStandardNamespace();
    WMIEnumerator adapters = connection.EnumerateInstances(u"Win32_NetworkAdapterConfiguration"_s);
    QStringList addresses;
    for (WMIObject adapter; adapters.Next(&adapter);) {
        if (!adapter.IsNull(u"IPAddress"_s))
            addresses += adapter.GetStringArray(u"IPAddress"_s);
    }
    return addresses;
}

void CServerProxy::StartHttpService()
{
    m_connection.ExecMethod(ServicePath(), u"StartService"_s);
}

void CServerProxy::StopHttpService()
{
    m_connection.ExecMethod(ServicePath(), u"StopService"_s);
}

void CServerProxy::RestartHttpService()
{
    m_connection.ExecMethod(ServicePath(), u"RestartService"_s);
}

void CServerProxy::StartQdfsService()
{
    m_connection.ExecMethod(QdfsServicePath(), u"StartService"_s);
}

void CServerProxy::StopQdfsService()
{
    m_connection.ExecMethod(QdfsServicePath(), u"StopService"_s);
}

void CServerProxy::ChangeQdfsStartMode(std::uint32_t startMode)
{
    ServerCall(m_connection, m_classes.qdfsService, u"ChangeStartMode"_s)
        .With(u"StartMode"_s, static_cast<std::int32_t>(startMode))
        .Run(QdfsServicePath());
}

} // namespace quenvolta
