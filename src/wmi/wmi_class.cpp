#include "wmi/wmi_class.h"

#include "foundation/com_exception.h"

namespace quenvolta
{

WMIObject WMIClass::SpawnInstance() const
{
    WbemObjectPtr instance;
    const HRESULT code = Handle() ? Handle()->SpawnInstance(&instance) : E_POINTER;
    if (Failed(code))
        throw ComException(code, nullptr, u"Cannot spawn instance of class '%s'", GetClassName());
    return WMIObject(instance);
}

WMIObject WMIClass::GetMethodParameters(const QString& methodName) const
{
    WbemObjectPtr signature;
    WbemObjectPtr parameters;
    HRESULT code = Handle() ? Handle()->GetMethod(methodName, &signature, nullptr) : E_POINTER;
    if (Succeeded(code))
        code = signature ? signature->SpawnInstance(&parameters) : WBEM_E_INVALID_METHOD_PARAMETERS;
    if (Failed(code))
        throw ComException(code, nullptr, u"Cannot get signature for WMI method '%s.%s'", GetClassName(), methodName);
    return WMIObject(parameters);
}

} // namespace quenvolta
