#pragma once

#include "provider/management_class.h"

namespace quenvolta
{

/// Quenvolta_QdfsService: the one instance "qdfssvc". Repositories aren't replicated here yet, so the service is
/// disabled and stopped.
class QdfsServiceClass final : public ManagementClass
{
public:
    static constexpr QStringView kName = u"qdfssvc";

    std::optional<InstanceRow> Get(const ClassDefinitionPtr& definition, const Keys& keys,
                                   CallContext& context) override;
    void Enumerate(const ClassDefinitionPtr& definition, CallContext& context) override;
};

} // namespace quenvolta
