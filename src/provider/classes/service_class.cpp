#include "provider/classes/service_class.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::uint32_t kSubversionAuthentication = 0;
constexpr std::uint32_t kWindowsAuthentication = 1;

} // namespace

ServiceClass::ServiceClass(DataFolder& data)
    : m_settings(data.Settings())
    , m_web(data)
    , m_methods(data, m_web)
{
    m_methods.AddTo(*this);
}

std::optional<InstanceRow> ServiceClass::Get(const ClassDefinitionPtr& definition, const Keys& keys, CallContext&)
{
    if (keys.value(u"Name"_s).compare(kName, Qt::CaseInsensitive) != 0)
        return std::nullopt;
    return Row(definition);
}

void ServiceClass::Enumerate(const ClassDefinitionPtr& definition, CallContext& context)
{
    context.rows.AddInstance(Row(definition));
}

InstanceRow ServiceClass::Row(const ClassDefinitionPtr& definition) const
{
    const RegistryAccessor& values = m_settings.Values();
    const WebService::Status status = m_web.ReadStatus();
    InstanceRow row(definition);
    row.Set(u"Name", kName.toString())
        .Set(u"ServiceState", static_cast<std::uint32_t>(status.state))
        .Set(u"ExitCode", status.exitCode)
        .Set(u"RepositoriesRoot", values.GetRepositoriesRoot())
        .Set(u"AdjustRepositoriesRootPermissions", values.GetAdjustRepositoriesRootPermissions())
        .Set(u"ServerName", m_settings.ServerName())
        .Set(u"UseCustomServerName", m_settings.UsesCustomName())
        .Set(u"CustomServerName", values.GetServerName())
        .Set(u"IsDomainController", false)
        .Set(u"UseSecureConnection", values.GetUseSsl())
        .Set(u"UnsecurePort", static_cast<std::uint32_t>(values.GetServerPort(false)))
        .Set(u"SecurePort", static_cast<std::uint32_t>(values.GetServerPort(true)))
        .Set(u"AuthType", values.GetUseWindowsAuth() ? kWindowsAuthentication : kSubversionAuthentication)
        .Set(u"AuthWindowsBasic", values.GetWindowsBasicEnabled())
        .Set(u"AuthWindowsIntegrated", values.GetWindowsIntegratedEnabled())
        .Set(u"UseUPNFormat", values.GetUseUpnFormat())
        .Set(u"ListenAllIPAddresses", !values.GetUseServerBindings())
        .Set(u"ListenIPAddressesArray", values.GetServerBindings())
        .Set(u"URL", m_settings.RepositoriesUrl())
        .Set(u"AccessLoggingEnabled", values.GetAccessLoggingEnabled())
        .Set(u"OperationalLoggingEnabled", values.GetOperationalLoggingEnabled())
        .Set(u"RedirectFromLegacyWebInterface", values.GetRedirectFromLegacyWebInterface());
    return row;
}

} // namespace quenvolta
