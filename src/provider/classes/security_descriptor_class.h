#pragma once

#include "provider/classes/repository_security_methods.h"
#include "provider/management_class.h"

#include <memory>

namespace quenvolta
{

/// Quenvolta_SecurityDescriptor: one for each object with permissions of its own, by the object's path.
class SecurityDescriptorClass final : public ManagementClass
{
public:
    explicit SecurityDescriptorClass(std::shared_ptr<RepositorySecurityMethods> security);

    std::optional<InstanceRow> Get(const ClassDefinitionPtr& definition, const Keys& keys,
                                   CallContext& context) override;

private:
    void SetSecurity(MethodCall& call);

    std::shared_ptr<RepositorySecurityMethods> m_security;
};

} // namespace quenvolta
