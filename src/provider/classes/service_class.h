#pragma once

#include "provider/data_folder.h"
#include "provider/management_class.h"
#include "provider/server_settings_reader.h"

namespace quenvolta
{

/// The numbers of a service's states that the classes tell.
enum class ServiceState : std::uint32_t { Stopped = 1, StartPending = 2, StopPending = 3, Running = 4 };

/// Quenvolta_Service: the one instance "QuenvoltaServer", the web service with the server's settings.
class ServiceClass final : public ManagementClass
{
public:
    static constexpr QStringView kName = u"QuenvoltaServer";

    explicit ServiceClass(DataFolder& data);

    std::optional<InstanceRow> Get(const ClassDefinitionPtr& definition, const Keys& keys,
                                   CallContext& context) override;
    void Enumerate(const ClassDefinitionPtr& definition, CallContext& context) override;

private:
    InstanceRow Row(const ClassDefinitionPtr& definition) const;

    ServerSettingsReader m_settings;
};

} // namespace quenvolta
