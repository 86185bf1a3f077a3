#include "wmi/wmi_connection.h"

#include "foundation/com_exception.h"
#include "foundation/guid.h"
#include "platform/wbem/proxy_blanket.h"
#include "platform/wbem/wbem_context.h"
#include "wmi/wmi_error.h"

#include <algorithm>
#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// What a handle that gives no elements while they come has of them.
HRESULT VisitWholeList(IWbemServices& services, const QString& path, const QString& method, const WbemObjectPtr& in,
                       const QString& parameter, const std::function<void(const WMIObject&)>& visit)
{
    WbemObjectPtr out;
    const HRESULT code = services.ExecMethod(path, method, 0, nullptr, in, &out, nullptr);
    if (Succeeded(code))
        std::ranges::for_each(WMIObject(out).GetObjectArray(parameter), visit);
    return code;
}

// Steps of opening a namespace; each failure is raised with what the peer said about it.
class NamespaceOpener
{
public:
    NamespaceOpener(const WbemLocatorFactory& locatorFactory, const QString& namespacePath)
        : m_namespacePath(namespacePath)
    {
        SetErrorInfo(nullptr);
        if (const HRESULT code = locatorFactory(&m_locator); Failed(code))
            throw ComException(code, TakeErrorInformation(), u"Cannot create WMI locator");
    }

    WbemServicesPtr Open(std::uint32_t impersonationLevel) const
    {
        WbemServicesPtr services = OpenSecured(impersonationLevel);
        if (impersonationLevel != RPC_C_IMP_LEVEL_DELEGATE)
            return services;
        const HRESULT probe = Probe(services);
        if (Succeeded(probe))
            return services;
        services = OpenSecured(RPC_C_IMP_LEVEL_IMPERSONATE);
        if (probe != RPC_S_SEC_PKG_ERROR) { // else delegation alone was refused, and nothing is left to find out
            if (const HRESULT code = Probe(services); Failed(code))
                RaiseCannotConnect(code);
        }
        return services;
    }

private:
    WbemServicesPtr OpenSecured(std::uint32_t impersonationLevel) const
    {
        SetErrorInfo(nullptr);
        WbemServicesPtr services;
        HRESULT code = m_locator->ConnectServer(m_namespacePath, {}, {}, {}, 0, u""_s, nullptr, &services);
        if (Failed(code))
            RaiseCannotConnect(code);
        ProxyBlanket blanket;
        if (code = CoQueryProxyBlanket(services, &blanket); Failed(code))
            throw ComException(code, TakeErrorInformation(), u"Cannot query proxy blanket");
        blanket.authenticationLevel = RPC_C_AUTHN_LEVEL_PKT_PRIVACY;
        blanket.impersonationLevel = impersonationLevel;
        if (code = CoSetProxyBlanket(services, blanket); Failed(code))
            throw ComException(code, TakeErrorInformation(), u"Cannot elevate impersonation level");
        return services;
    }

    // Reads something that every server has.
    static HRESULT Probe(const WbemServicesPtr& services)
    {
        SetErrorInfo(nullptr);
        WbemObjectPtr systemClass;
        return services->GetObject(u"__SystemClass"_s, 0, nullptr, &systemClass);
    }

    [[noreturn]] void RaiseCannotConnect(HRESULT code) const
    {
        throw ComException(code, TakeErrorInformation(), u"Cannot connect to WMI namespace '%s'", m_namespacePath);
    }

    const QString& m_namespacePath;
    WbemLocatorPtr m_locator;
};

} // namespace

WMIConnection::WMIConnection(WbemLocatorFactory locatorFactory, const QString& namespacePath,
                             std::uint32_t impersonationLevel)
    : m_locatorFactory(std::move(locatorFactory))
    , m_namespacePath(namespacePath)
    , m_impersonationLevel(impersonationLevel)
    , m_services(NamespaceOpener(m_locatorFactory, m_namespacePath).Open(m_impersonationLevel))
{
}

WMIConnection WMIConnection::Connect(WbemLocatorFactory locatorFactory, const QString& namespacePath,
                                     std::uint32_t impersonationLevel)
{
    return WMIConnection(std::move(locatorFactory), namespacePath, impersonationLevel);
}

// Makes a call, and once more on a new connection when the server side is gone. Both carry one request identifier,
// so that a server that did the work already can tell.
template <typename Call>
HRESULT WMIConnection::Perform(const Call& call)
{
    const QUuid requestId = NewGuid();
    const auto attempt = [&] {
        if (const auto identity = std::dynamic_pointer_cast<IRequestIdentity>(m_services))
            identity->SetNextRequestId(requestId);
        SetErrorInfo(nullptr);
        return call(*m_services);
    };
    const HRESULT code = attempt();
    if (code != RPC_E_DISCONNECTED)
        return code;
    m_services = NamespaceOpener(m_locatorFactory, m_namespacePath).Open(m_impersonationLevel);
    return attempt();
}

WMIObject WMIConnection::GetObject(const QString& path, bool allowNotFound)
{
    WbemObjectPtr object;
    const HRESULT code =
        Perform([&](IWbemServices& services) { return services.GetObject(path, 0, nullptr, &object); });
    if (allowNotFound && code == WBEM_E_NOT_FOUND)
        return {};
    RaiseWmiError(code);
    return WMIObject(object);
}

WMIClass WMIConnection::GetClass(const QString& className)
{
    WbemObjectPtr object;
    RaiseWmiError(Perform([&](IWbemServices& services) { return services.GetObject(className, 0, nullptr, &object); }));
    return WMIClass(object);
}

WMIEnumerator WMIConnection::EnumerateInstances(const QString& className)
{
    EnumWbemClassObjectPtr enumerator;
    RaiseWmiError(Perform(
        [&](IWbemServices& services) { return services.CreateInstanceEnum(className, 0, nullptr, &enumerator); }));
    return WMIEnumerator(enumerator);
}

WMIObject WMIConnection::ExecMethod(const QString& path, const QString& method, const WMIObject& in)
{
    WbemObjectPtr out;
    RaiseWmiError(Perform([&](IWbemServices& services) {
        return services.ExecMethod(path, method, 0, nullptr, in.Handle(), &out, nullptr);
    }));
    return WMIObject(out);
}

void WMIConnection::VisitElements(const QString& path, const QString& method, const WMIObject& in,
                                  const QString& parameter, const std::function<void()>& begin,
                                  const std::function<void(const WMIObject&)>& visit)
{
    RaiseWmiError(Perform([&](IWbemServices& services) {
        begin();
        auto* const inPieces = dynamic_cast<IMethodElements*>(&services);
        if (!inPieces)
            return VisitWholeList(services, path, method, in.Handle(), parameter, visit);
        return inPieces->VisitElements(path, method, in.Handle(), parameter,
                                       [&](const WbemObjectPtr& element) { visit(WMIObject(element)); });
    }));
}

WbemCallResultPtr WMIConnection::ExecMethodAsync(const QString& path, const QString& method, const WMIObject& in,
                                                 const WbemContextPtr& context)
{
    WbemCallResultPtr result;
    RaiseWmiError(Perform([&](IWbemServices& services) {
        return services.ExecMethod(path, method, WBEM_FLAG_RETURN_IMMEDIATELY, context, in.Handle(), nullptr, &result);
    }));
    return result;
}

WbemContextPtr WMIConnection::CreateContext()
{
    return CreateWbemContext();
}

void WMIConnection::SetContextValue(const WbemContextPtr& context, const QString& name, const QString& value)
{
    CheckResult(context->SetValue(name, 0, value));
}

} // namespace quenvolta
