#include "platform/wbem/proxy_blanket.h"

namespace quenvolta
{

HRESULT CoQueryProxyBlanket(const WbemServicesPtr& proxy, ProxyBlanket* blanket)
{
    const auto security = std::dynamic_pointer_cast<IClientSecurity>(proxy);
    return security ? security->QueryBlanket(blanket) : E_NOINTERFACE;
}

HRESULT CoSetProxyBlanket(const WbemServicesPtr& proxy, const ProxyBlanket& blanket)
{
    const auto security = std::dynamic_pointer_cast<IClientSecurity>(proxy);
    return security ? security->SetBlanket(blanket) : E_NOINTERFACE;
}

} // namespace quenvolta
