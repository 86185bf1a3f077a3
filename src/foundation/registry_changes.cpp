#include "foundation/registry_changes.h"

#include "foundation/win32_exception.h"

namespace quenvolta
{

RegistryChanges::RegistryChanges(Registry& registry)
    : m_registry(registry)
{
    if (const Win32Error error = m_registry.BeginChanges(); error != ERROR_SUCCESS)
        throw Win32Exception(error, u"Cannot write registry value");
}

RegistryChanges::~RegistryChanges()
{
    m_registry.RollBackChanges();
}

void RegistryChanges::Commit()
{
    if (const Win32Error error = m_registry.CommitChanges(); error != ERROR_SUCCESS)
        throw Win32Exception(error, u"Cannot write registry value");
}

} // namespace quenvolta
