#pragma once

#include "platform/registry/registry.h"

namespace quenvolta
{

/// Several changes of a registry that are made together: without Commit, none of them is. Failures are
/// Win32Exceptions.
class RegistryChanges
{
public:
    explicit RegistryChanges(Registry& registry);
    ~RegistryChanges();
    RegistryChanges(const RegistryChanges&) = delete;
    RegistryChanges& operator=(const RegistryChanges&) = delete;

    void Commit();

private:
    Registry& m_registry;
};

} // namespace quenvolta
