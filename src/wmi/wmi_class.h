#pragma once

#include "wmi/wmi_class_ref.h"
#include "wmi/wmi_object.h"

namespace quenvolta
{

/// A class definition.
class WMIClass final : public WMIObject, public IcWMIClassRef
{
public:
    using WMIObject::WMIObject;

    const WMIClass& GetClass() override { return *this; }

    /// A new instance that is not stored anywhere.
    WMIObject SpawnInstance() const;
    /// An empty input-parameter object of the method.
    WMIObject GetMethodParameters(const QString& methodName) const;
};

} // namespace quenvolta
