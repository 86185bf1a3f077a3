#include "provider/management_class.h"

#include "provider/provider_error.h"
#include "provider/provider_texts.h"

#include <utility>

namespace quenvolta
{

std::optional<InstanceRow> ManagementClass::Get(const ClassDefinitionPtr& definition, const Keys&, CallContext&)
{
    throw ProviderError(WBEM_E_NOT_FOUND, replies::kNoInstances.arg(definition->name));
}

void ManagementClass::Enumerate(const ClassDefinitionPtr& definition, CallContext&)
{
    throw ProviderError(WBEM_E_NOT_SUPPORTED, replies::kNoInstances.arg(definition->name));
}

const ManagementClass::Handler* ManagementClass::FindHandler(const QString& method) const
{
    const auto found = m_methods.constFind(method);
    return found == m_methods.cend() ? nullptr : &found->handler;
}

void ManagementClass::Handle(const QString& method, Effect effect, Handler handler)
{
    m_methods.insert(method, {effect, std::move(handler)});
}

} // namespace quenvolta
