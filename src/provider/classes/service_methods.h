#pragma once

#include "provider/data_folder.h"
#include "provider/management_class.h"
#include "provider/web/web_service.h"

namespace quenvolta
{

/// The methods of Quenvolta_Service that concern the web service and its settings.
class ServiceMethods
{
public:
    ServiceMethods(DataFolder& data, WebService& service);

    void AddTo(ManagementClass& target);

private:
    using Write = std::function<void(RegistryAccessor&)>;

    void SetAuthenticationOptions(MethodCall& call);
    void SetNetworkOptions(MethodCall& call);
    void SetServerName(MethodCall& call);
    void SetLoggingOptions(MethodCall& call);
    void SetWebInterfaceOptions(MethodCall& call);
    void SetRepositoriesRoot(MethodCall& call);

    /// `change` alters the settings as they are now, and `write` stores what it altered.
    void Change(MethodCall& call, WebService::Ports ports, const std::function<void(WebSettings&)>& change,
                const Write& write);

    DataFolder& m_data;
    WebService& m_service;
};

} // namespace quenvolta
