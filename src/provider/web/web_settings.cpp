#include "provider/web/web_settings.h"

#include "provider/server_settings_reader.h"

#include <QSysInfo>

namespace quenvolta
{

using namespace Qt::StringLiterals;

WebSettings WebSettings::Read(Registry& registry)
{
    const ServerSettingsReader reader(registry);
    const RegistryAccessor& values = reader.Values();
    const RegistryKey key(registry, RegistryAccessor::kServerKey.toString());
    WebSettings settings;
    settings.repositoriesRoot = values.GetRepositoriesRoot();
    settings.serverName = reader.ServerName();
    settings.computerName = QSysInfo::machineHostName();
    settings.secure = values.GetUseSsl();
    settings.port = values.GetServerPort(settings.secure);
    settings.listenOnAll = !values.GetUseServerBindings();
    settings.addresses = values.GetServerBindings();
    settings.systemAccounts = values.GetUseWindowsAuth();
    settings.basic = values.GetWindowsBasicEnabled();
    settings.integrated = values.GetWindowsIntegratedEnabled();
    settings.upnFormat = values.GetUseUpnFormat();
    settings.accessLog = values.GetAccessLoggingEnabled();
    settings.operationalLog = values.GetOperationalLoggingEnabled();
    settings.redirectLegacy = values.GetRedirectFromLegacyWebInterface();
    settings.pamService = key.ReadString(u"PamService"_s).value_or(u"quenvolta"_s);
    settings.keytab = key.ReadString(u"KerberosKeytab"_s).value_or(QString());
    return settings;
}

} // namespace quenvolta
