#include "provider/classes/service_methods.h"

#include "provider/data_lock.h"
#include "provider/provider_error.h"
#include "provider/svn/repository_names.h"
#include "provider/web/repositories_root.h"
#include "provider/web/web_texts.h"

#include <algorithm>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

using Effect = ManagementClass::Effect;

constexpr qint32 kSubversionAuthentication = 0;
constexpr qint32 kWindowsAuthentication = 1;

// What SetRepositoriesRoot answers.
constexpr std::uint32_t kRootIsSet = 0;
constexpr std::uint32_t kRootDoesNotExist = 1;

// Other names than the Internet's are allowed, as long as an address can hold them.
void CheckServerName(const QString& name)
{
    constexpr qsizetype kLongest = 253;
    constexpr QStringView kReserved = u"/\\?#@:[]<>\"%^`{|}";
    const bool valid = std::all_of(name.cbegin(), name.cend(), [&](QChar each) {
        return each.isPrint() && !each.isSpace() && !kReserved.contains(each);
    });
    if (!valid || name.isEmpty() || name.size() > kLongest || name.startsWith(u'-'))
        throw ProviderError(WBEM_E_INVALID_PARAMETER, webtexts::kInvalidServerName.arg(RepositoryNames::Show(name)));
}

} // namespace

ServiceMethods::ServiceMethods(DataFolder& data, WebService& service)
    : m_data(data)
    , m_service(service)
{
}

void ServiceMethods::AddTo(ManagementClass& target)
{
    target.Handle(u"StartService"_s, Effect::Changes,
                  [this](MethodCall& call) { m_service.Start(call.Context().cancel, call.Context().repeated); });
    target.Handle(u"StopService"_s, Effect::Changes,
                  [this](MethodCall& call) { m_service.Stop(call.Context().cancel, call.Context().repeated); });
    target.Handle(u"RestartService"_s, Effect::Changes,
                  [this](MethodCall& call) { m_service.Restart(call.Context().cancel); });
    target.Handle(u"SetAuthenticationOptions"_s, Effect::Changes,
                  [this](MethodCall& call) { SetAuthenticationOptions(call); });
    target.Handle(u"SetNetworkOptions"_s, Effect::Changes, [this](MethodCall& call) { SetNetworkOptions(call); });
    target.Handle(u"SetServerName"_s, Effect::Changes, [this](MethodCall& call) { SetServerName(call); });
    target.Handle(u"SetLoggingOptions"_s, Effect::Changes, [this](MethodCall& call) { SetLoggingOptions(call); });
    target.Handle(u"SetWebInterfaceOptions"_s, Effect::Changes,
                  [this](MethodCall& call) { SetWebInterfaceOptions(call); });
    target.Handle(u"SetRepositoriesRoot"_s, Effect::Changes, [this](MethodCall& call) { SetRepositoriesRoot(call); });
}

void ServiceMethods::Change(MethodCall& call, WebService::Ports ports, const std::function<void(WebSettings&)>& change,
                            const Write& write)
{
    const DataLock lock(m_data.Path(), call.Context().cancel);
    WebSettings settings = WebSettings::Read(m_data.Settings());
    change(settings);
    m_service.Change(settings, ports, [&] {
        RegistryAccessor values(m_data.Settings(), RegistryAccessor::kServerKey.toString());
        write(values);
    });
}

void ServiceMethods::SetAuthenticationOptions(MethodCall& call)
{
    const qint32 type = call.Int32(u"AuthType");
    // Older servers know basic authentication alone.
    const bool basic = call.Optional<bool>(u"WindowsBasic").value_or(true);
    const bool integrated = call.Optional<bool>(u"WindowsIntegrated").value_or(false);
    const bool upnFormat = call.Bool(u"UseUPNFormat");
    if (type != kSubversionAuthentication && type != kWindowsAuthentication)
        throw ProviderError(WBEM_E_INVALID_PARAMETER, webtexts::kInvalidAuthentication.arg(QString::number(type)));
    if (type == kWindowsAuthentication && !basic && !integrated)
        throw ProviderError(WBEM_E_INVALID_PARAMETER, webtexts::kNoAuthenticationMethod.Whole());
    Change(
        call, WebService::Ports::Trusted,
        [&](WebSettings& settings) {
            settings.systemAccounts = type == kWindowsAuthentication;
            settings.basic = basic;
            settings.integrated = integrated;
            settings.upnFormat = upnFormat;
        },
        [&](RegistryAccessor& values) {
            values.SetUseWindowsAuth(type == kWindowsAuthentication);
            values.SetWindowsBasicEnabled(basic);
            values.SetWindowsIntegratedEnabled(integrated);
            values.SetUseUpnFormat(upnFormat);
        });
}

void ServiceMethods::SetNetworkOptions(MethodCall& call)
{
    const bool secure = call.Bool(u"UseSecureConnection");
    const int port = call.Int32(u"Port");
    const std::optional<QStringList> addresses = call.Optional<QStringList>(u"ListenIPAddressesArray");
    Change(
        call, WebService::Ports::Checked,
        [&](WebSettings& settings) {
            settings.secure = secure;
            settings.port = port;
            settings.listenOnAll = !addresses;
            settings.addresses = addresses.value_or(settings.addresses);
        },
        [&](RegistryAccessor& values) {
            values.SetUseSsl(secure);
            values.SetServerPort(secure, port);
            values.SetUseServerBindings(addresses.has_value());
            if (addresses)
                values.SetServerBindings(*addresses);
        });
}

void ServiceMethods::SetServerName(MethodCall& call)
{
    const QString name = call.Bool(u"UseCustom") ? call.String(u"CustomServerName") : QString();
    if (call.Bool(u"UseCustom"))
        CheckServerName(name);
    Change(
        call, WebService::Ports::Trusted,
        [&](WebSettings& settings) { settings.serverName = name.isEmpty() ? settings.computerName : name; },
        [&](RegistryAccessor& values) { values.SetServerName(name); });
}

void ServiceMethods::SetLoggingOptions(MethodCall& call)
{
    const bool access = call.Bool(u"EnableAccessLogging");
    const bool operations = call.Bool(u"EnableOperationalLogging");
    Change(
        call, WebService::Ports::Trusted,
        [&](WebSettings& settings) {
            settings.accessLog = access;
            settings.operationalLog = operations;
        },
        [&](RegistryAccessor& values) {
            values.SetAccessLoggingEnabled(access);
            values.SetOperationalLoggingEnabled(operations);
        });
}

void ServiceMethods::SetWebInterfaceOptions(MethodCall& call)
{
    const bool redirect = call.Bool(u"RedirectFromLegacyWebInterface");
    Change(
        call, WebService::Ports::Trusted, [&](WebSettings& settings) { settings.redirectLegacy = redirect; },
        [&](RegistryAccessor& values) { values.SetRedirectFromLegacyWebInterface(redirect); });
}

void ServiceMethods::SetRepositoriesRoot(MethodCall& call)
{
    const RepositoriesRoot root(call.String(u"RepositoriesRoot"));
    const bool adjust = call.Bool(u"AdjustPermissions");
    if (!root.Exists()) {
        if (!call.Bool(u"ForceCreate")) {
            call.Return(u"ReturnValue", kRootDoesNotExist);
            return;
        }
        root.Make();
    } else if (adjust) {
        root.HandOver();
    }
    root.RequireAccess();
    Change(
        call, WebService::Ports::Trusted, [&](WebSettings& settings) { settings.repositoriesRoot = root.Path(); },
        [&](RegistryAccessor& values) {
            values.SetRepositoriesRoot(root.Path());
            values.SetAdjustRepositoriesRootPermissions(adjust);
        });
    call.Return(u"ReturnValue", kRootIsSet);
}

} // namespace quenvolta
