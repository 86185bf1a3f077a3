#pragma once

#include "provider/data_folder.h"
#include "provider/management_class.h"

namespace quenvolta
{

/// Quenvolta_QdfsService: the one instance "qdfssvc". Repositories aren't replicated here yet, so the service is
/// stopped, and disabled until somebody chooses another start mode.
class QdfsServiceClass final : public ManagementClass
{
public:
    static constexpr QStringView kName = u"qdfssvc";

    /// `data` must outlive it.
    explicit QdfsServiceClass(DataFolder& data);

    std::optional<InstanceRow> Get(const ClassDefinitionPtr& definition, const Keys& keys,
                                   CallContext& context) override;
    void Enumerate(const ClassDefinitionPtr& definition, CallContext& context) override;

private:
    InstanceRow Row(const ClassDefinitionPtr& definition) const;
    void ChangeStartMode(MethodCall& call);

    DataFolder& m_data;
};

} // namespace quenvolta
