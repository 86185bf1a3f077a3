#include "provider/classes/security_descriptor_class.h"

namespace quenvolta
{

std::optional<InstanceRow> SecurityDescriptorClass::Get(const ClassDefinitionPtr&, const Keys&, CallContext&)
{
    return std::nullopt;
}

} // namespace quenvolta
