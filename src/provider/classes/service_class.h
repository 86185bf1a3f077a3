#pragma once

#include "provider/classes/service_methods.h"
#include "provider/data_folder.h"
#include "provider/management_class.h"
#include "provider/server_settings_reader.h"
#include "provider/web/web_service.h"

namespace quenvolta
{

/// Quenvolta_Service: the one instance "QuenvoltaServer", the web service with the server's settings.
class ServiceClass final : public ManagementClass
{
public:
    static constexpr QStringView kName = u"QuenvoltaServer";

    explicit ServiceClass(DataFolder& data);

    std::optional<InstanceRow> Get(const ClassDefinitionPtr& definition, const Keys& keys,
                                   CallContext& context) override;
    void Enumerate(const ClassDefinitionPtr& definition, CallContext& context) override;

    WebService& Web() { return m_web; }

private:
    InstanceRow Row(const ClassDefinitionPtr& definition) const;

    ServerSettingsReader m_settings;
    WebService m_web;
    ServiceMethods m_methods;
};

} // namespace quenvolta
