#include "provider/classes/account_class.h"

namespace quenvolta
{

std::optional<InstanceRow> AccountClass::Get(const ClassDefinitionPtr&, const Keys&, CallContext&)
{
    return std::nullopt;
}

void AccountClass::Enumerate(const ClassDefinitionPtr&, CallContext&) {}

} // namespace quenvolta
