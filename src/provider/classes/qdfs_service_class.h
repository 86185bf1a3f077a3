#pragma once

#include "provider/data_folder.h"
#include "provider/management_class.h"

namespace quenvolta
{

/// Quenvolta_QdfsService: the one instance "qdfssvc", a process of its own that goes on when the provider ends. It is
/// disabled until somebody chooses another start mode. Repositories aren't replicated here yet, so it has nothing to
/// do.
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
    std::uint32_t StartMode() const;
    void Start(MethodCall& call);
    void Stop(MethodCall& call);
    void ChangeStartMode(MethodCall& call);

    DataFolder& m_data;
};

} // namespace quenvolta
