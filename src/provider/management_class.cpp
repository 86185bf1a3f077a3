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
    const auto found = m_handlers.constFind(method);
    return found == m_handlers.cend() ? nullptr : &*found;
}

void ManagementClass::Handle(const QString& method, Effect effect, Handler handler)
{
    m_handlers.insert(method, std::move(handler));
    if (effect == Effect::Changes)
        m_changing.append(method);
}

} // namespace quenvolta
