#include "model/server_proxy.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::int32_t kSubversionAuthentication = 0;
constexpr std::int32_t kWindowsAuthentication = 1;

} // namespace

void CServerProxy::SetAuthenticationOptions(const AuthenticationOptions& options)
{
    ServerCall call(m_connection, m_classes.service, u"SetAuthenticationOptions"_s);
    call.With(u"AuthType"_s, options.windowsAuthentication ? kWindowsAuthentication : kSubversionAuthentication);
    if (HasCapability(ServerCapability::kAuthenticationParameters)) {
        call.With(u"WindowsBasic"_s, options.basicAuthentication);
        call.With(u"WindowsIntegrated"_s, options.integratedAuthentication);
    }
    call.With(u"UseUPNFormat"_s, options.useUpnFormat).Run(ServicePath());
}

void CServerProxy::SetNetworkOptions(bool useSecureConnection, std::int32_t port,
                                     const std::optional<QStringList>& addresses)
{
    ServerCall call(m_connection, m_classes.service, u"SetNetworkOptions"_s);
    call.With(u"UseSecureConnection"_s, useSecureConnection).With(u"Port"_s, port);
    if (addresses)
        call.With(u"ListenIPAddressesArray"_s, *addresses);
    call.Run(ServicePath());
}

void CServerProxy::SetServerName(const std::optional<QString>& customName)
{
    ServerCall call(m_connection, m_classes.service, u"SetServerName"_s);
    call.With(u"UseCustom"_s, customName.has_value());
    if (customName)
        call.With(u"CustomServerName"_s, *customName);
    call.Run(ServicePath());
}

void CServerProxy::SetLoggingOptions(bool accessLogging, bool operationalLogging)
{
    ServerCall(m_connection, m_classes.service, u"SetLoggingOptions"_s)
        .With(u"EnableAccessLogging"_s, accessLogging)
        .With(u"EnableOperationalLogging"_s, operationalLogging)
        .Run(ServicePath());
}

void CServerProxy::SetWebInterfaceOptions(bool redirectFromLegacyWebInterface)
{
    ServerCall(m_connection, m_classes.service, u"SetWebInterfaceOptions"_s)
        .With(u"RedirectFromLegacyWebInterface"_s, redirectFromLegacyWebInterface)
        .Run(ServicePath());
}

std::uint32_t CServerProxy::SetRepositoriesRoot(const QString& path, bool adjustPermissions, bool forceCreate)
{
    return ServerCall(m_connection, m_classes.service, u"SetRepositoriesRoot"_s)
        .With(u"RepositoriesRoot"_s, path)
        .With(u"AdjustPermissions"_s, adjustPermissions)
        .With(u"ForceCreate"_s, forceCreate)
        .Run(ServicePath())
        .GetUInt32(u"ReturnValue"_s);
}

} // namespace quenvolta
