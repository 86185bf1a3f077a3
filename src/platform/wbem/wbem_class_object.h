#pragma once

#include "platform/hresult.h"
#include "platform/wbem/variant.h"

namespace quenvolta
{

/// An instance, a class definition or the parameters of a method. Names are compared without regard to case.
class IWbemClassObject
{
public:
    virtual ~IWbemClassObject() = default;

    /// Reads a property, or one of the system properties "__CLASS" and "__RELPATH".
    /// WBEM_E_NOT_FOUND when the class has no such property.
    virtual HRESULT Get(const QString& name, Variant* value, CimType* type = nullptr) const = 0;

    /// The value that Get would give, where the object holds it as such; null when Get must be asked. Valid until the
    /// object changes.
    virtual const Variant* Find(const QString& name) const = 0;

    /// Writes a property. WBEM_E_NOT_FOUND when the class has no such property, WBEM_E_TYPE_MISMATCH when the value is
    /// not of its type, WBEM_E_VALUE_OUT_OF_RANGE for a number outside it. Null is allowed for every property.
    virtual HRESULT Put(const QString& name, const Variant& value) = 0;

    /// The names of the properties, in the order of the class.
    virtual HRESULT GetNames(QStringList* names) const = 0;

    /// The signature of a class's method: empty parameter objects to spawn instances of. A signature is empty
    /// when the method has no parameters of that direction. WBEM_E_NOT_FOUND when there is no such method.
    virtual HRESULT GetMethod(const QString& name, WbemObjectPtr* inSignature, WbemObjectPtr* outSignature) const = 0;

    /// A new object of this class (or signature) with every property null.
    virtual HRESULT SpawnInstance(WbemObjectPtr* instance) const = 0;

    /// S_OK when this is of the class `ancestor` or of one derived from it, else S_FALSE.
    virtual HRESULT InheritsFrom(const QString& ancestor) const = 0;
};

} // namespace quenvolta
