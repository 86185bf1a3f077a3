#pragma once

namespace quenvolta
{

class WMIClass;

/// Gives a class definition, which may be read late and shared.
class IcWMIClassRef
{
public:
    virtual ~IcWMIClassRef() = default;
    virtual const WMIClass& GetClass() = 0;
};

} // namespace quenvolta
