#pragma once

#include "platform/hresult.h"
#include "platform/wbem/wbem_services.h"

#include <QString>

#include <cstdint>

namespace quenvolta
{

/// Every call is signed and encrypted.
inline constexpr std::uint32_t RPC_C_AUTHN_LEVEL_PKT_PRIVACY = 6;
inline constexpr std::uint32_t RPC_C_IMP_LEVEL_IMPERSONATE = 3;
inline constexpr std::uint32_t RPC_C_IMP_LEVEL_DELEGATE = 4;

/// The security settings of a connection's calls.
struct ProxyBlanket {
    std::uint32_t authenticationService = 0;
    std::uint32_t authorizationService = 0;
    QString serverPrincipalName;
    std::uint32_t authenticationLevel = 0;
    std::uint32_t impersonationLevel = 0;
    QString authenticationIdentity;
    std::uint32_t capabilities = 0;
};

/// What a services handle offers when its security can be read and set.
class IClientSecurity
{
public:
    virtual ~IClientSecurity() = default;
    virtual HRESULT QueryBlanket(ProxyBlanket* blanket) const = 0;
    virtual HRESULT SetBlanket(const ProxyBlanket& blanket) = 0;
};

/// Reads the security settings of a connection; E_NOINTERFACE when it has none.
HRESULT CoQueryProxyBlanket(const WbemServicesPtr& proxy, ProxyBlanket* blanket);

/// Sets them; E_NOINTERFACE when it has none.
HRESULT CoSetProxyBlanket(const WbemServicesPtr& proxy, const ProxyBlanket& blanket);

} // namespace quenvolta
