#pragma once

#include "platform/hresult.h"
#include "platform/wbem/variant.h"

#include <QUuid>

#include <functional>

namespace quenvolta
{

/// Wait without a limit.
inline constexpr int WBEM_INFINITE = -1;
/// The call returns at once; its outcome is asked of the call result.
inline constexpr int WBEM_FLAG_RETURN_IMMEDIATELY = 0x10;

/// Named values that travel with a call.
class IWbemContext
{
public:
    virtual ~IWbemContext() = default;
    /// Adds or replaces a value; flags must be 0.
    virtual HRESULT SetValue(const QString& name, int flags, const Variant& value) = 0;
    /// WBEM_E_NOT_FOUND when there is no such value.
    virtual HRESULT GetValue(const QString& name, int flags, Variant* value) const = 0;
    /// The names of all values.
    virtual HRESULT GetNames(int flags, QStringList* names) const = 0;
};
using WbemContextPtr = std::shared_ptr<IWbemContext>;

/// Objects that arrive one after another. Dropping it tells the server that the rest isn't wanted.
class IEnumWbemClassObject
{
public:
    virtual ~IEnumWbemClassObject() = default;
    /// Appends up to `count` objects. S_OK when all came, S_FALSE at the end, WBEM_S_TIMEDOUT when
    /// `timeoutMs` (or WBEM_INFINITE) passed first; else the failure of the enumeration.
    virtual HRESULT Next(int timeoutMs, int count, QList<WbemObjectPtr>* objects) = 0;
};
using EnumWbemClassObjectPtr = std::shared_ptr<IEnumWbemClassObject>;

/// A call that was made with WBEM_FLAG_RETURN_IMMEDIATELY.
class IWbemCallResult
{
public:
    virtual ~IWbemCallResult() = default;
    /// S_OK and the call's own final code in `status`; WBEM_S_TIMEDOUT while it runs and `timeoutMs` passed
    /// (0 asks without waiting); a failure when the answer itself can't be had. The server's error object is
    /// the thread's error information after a failed status was given.
    virtual HRESULT GetCallStatus(int timeoutMs, HRESULT* status) = 0;
    /// The output parameters (empty for a method without any), or as GetCallStatus.
    virtual HRESULT GetResultObject(int timeoutMs, WbemObjectPtr* result) = 0;
};
using WbemCallResultPtr = std::shared_ptr<IWbemCallResult>;

/// One open namespace. A failed call may leave error information for the thread (error_info.h).
class IWbemServices
{
public:
    virtual ~IWbemServices() = default;
    /// The instance at an object path, or the definition of the class that the path names.
    virtual HRESULT GetObject(const QString& path, int flags, const WbemContextPtr& context, WbemObjectPtr* object) = 0;
    /// All instances of a class. The call returns when the server began to answer.
    virtual HRESULT CreateInstanceEnum(const QString& className, int flags, const WbemContextPtr& context,
                                       EnumWbemClassObjectPtr* enumerator) = 0;
    /// Calls a method. `in` may be empty. With WBEM_FLAG_RETURN_IMMEDIATELY `out` stays untouched and `result`
    /// is given; without it `result` may be null.
    virtual HRESULT ExecMethod(const QString& path, const QString& method, int flags, const WbemContextPtr& context,
                               const WbemObjectPtr& in, WbemObjectPtr* out, WbemCallResultPtr* result) = 0;
};
using WbemServicesPtr = std::shared_ptr<IWbemServices>;

/// Takes an object of a list. The next one may stand in the same object, unless the visitor kept it.
using WbemObjectVisitor = std::function<void(const WbemObjectPtr&)>;

/// What the handle of an open namespace offers beside IWbemServices when a method's long list can be had piece by
/// piece while it comes.
class IMethodElements
{
public:
    virtual ~IMethodElements() = default;
    /// Calls a method like IWbemServices::ExecMethod and hands over the elements of its output parameter `parameter`,
    /// an array of objects. After a failure what was handed over is a part of them.
    virtual HRESULT VisitElements(const QString& path, const QString& method, const WbemObjectPtr& in,
                                  const QString& parameter, const WbemObjectVisitor& visit) = 0;
};

/// What the handle of an open namespace offers beside IWbemServices when its calls carry an identifier of their
/// own: the caller that repeats a call on a new connection gives it the same identifier, and the server
/// recognises it.
class IRequestIdentity
{
public:
    virtual ~IRequestIdentity() = default;
    /// The identifier of the next call made through this handle (used once).
    virtual void SetNextRequestId(const QUuid& id) = 0;
};

/// Opens namespaces.
class IWbemLocator
{
public:
    virtual ~IWbemLocator() = default;
    /// Opens `\\COMPUTER\root\NAME`; "." is the local computer. No user, password, locale or authority is needed:
    /// the caller's own identity counts. The failure's own words are the thread's error information.
    virtual HRESULT ConnectServer(const QString& namespacePath, const QString& user, const QString& password,
                                  const QString& locale, int flags, const QString& authority,
                                  const WbemContextPtr& context, WbemServicesPtr* services) = 0;
};
using WbemLocatorPtr = std::shared_ptr<IWbemLocator>;

} // namespace quenvolta
