#pragma once

#include "platform/wbem/wbem_services.h"
#include "wmi/locator_factory.h"
#include "wmi/wmi_class.h"
#include "wmi/wmi_enumerator.h"
#include "wmi/wmi_object.h"

#include <QString>

#include <cstdint>
#include <functional>

namespace quenvolta
{

/// One open namespace. When the server side is gone, the next call opens it again and is repeated once, under the same
/// request identifier.
class WMIConnection
{
public:
    /// Opens and secures a namespace such as \\.\root\Quenvolta. With the delegate level (4) the connection is probed
    /// and falls back to impersonation (3). ComException on failure.
    static WMIConnection Connect(WbemLocatorFactory locatorFactory, const QString& namespacePath,
                                 std::uint32_t impersonationLevel);

    WMIConnection(WMIConnection&&) noexcept = default;
    WMIConnection& operator=(WMIConnection&&) noexcept = default;
    WMIConnection(const WMIConnection&) = delete;
    WMIConnection& operator=(const WMIConnection&) = delete;

    const QString& NamespacePath() const { return m_namespacePath; }
    /// The level that was asked for.
    std::uint32_t ImpersonationLevel() const { return m_impersonationLevel; }

    /// The object at the path. With `allowNotFound` a missing one is an empty object.
    WMIObject GetObject(const QString& path, bool allowNotFound = false);
    WMIClass GetClass(const QString& className);
    WMIEnumerator EnumerateInstances(const QString& className);
    /// Calls a method of an instance (by its path) or of a class (by its name) and gives the output parameters. `in`
    /// may be empty.
    WMIObject ExecMethod(const QString& path, const QString& method, const WMIObject& in = {});
    /// Calls a method and hands over the elements of its output parameter `parameter`, an array of objects, while they
    /// come. `begin` runs before the first one, and again when the call is repeated.
    void VisitElements(const QString& path, const QString& method, const WMIObject& in, const QString& parameter,
                       const std::function<void()>& begin, const std::function<void(const WMIObject&)>& visit);
    /// Starts a call that the caller asks for its outcome.
    WbemCallResultPtr ExecMethodAsync(const QString& path, const QString& method, const WMIObject& in,
                                      const WbemContextPtr& context);

    static WbemContextPtr CreateContext();
    static void SetContextValue(const WbemContextPtr& context, const QString& name, const QString& value);

private:
    WMIConnection(WbemLocatorFactory locatorFactory, const QString& namespacePath, std::uint32_t impersonationLevel);

    template <typename Call>
    HRESULT Perform(const Call& call);

    WbemLocatorFactory m_locatorFactory;
    QString m_namespacePath;
    std::uint32_t m_impersonationLevel;
    WbemServicesPtr m_services;
};

} // namespace quenvolta
