#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

namespace quenvolta
{

/// An answer that older servers don't give.
enum class KnownState {
    Unknown = 0,
    Yes = 1,
    No = 2,
};

/// What setting the repositories' root answers; other numbers are the server's own.
inline constexpr std::uint32_t kRepositoriesRootSet = 0;
/// The folder isn't there and was not to be made; nothing has changed.
inline constexpr std::uint32_t kRepositoriesRootMissing = 1;

/// The settings of the web service.
struct ServerSettings {
    QString repositoriesRoot;
    bool adjustRepositoriesRootPermissions = false;
    QString serverName;
    bool useCustomServerName = false;
    QString customServerName;
    /// Unknown before server 3.0.
    KnownState domainController = KnownState::Unknown;
    bool useSecureConnection = false;
    std::uint32_t unsecurePort = 0;
    std::uint32_t securePort = 0;
    /// Else Subversion authentication.
    bool windowsAuthentication = false;
    bool basicAuthentication = true;
    bool integratedAuthentication = false;
    bool useUpnFormat = false;
    /// Else on all addresses.
    bool listenOnSelectedAddresses = false;
    QStringList listenAddresses;
    QString url;
    bool accessLogging = false;
    bool operationalLogging = false;
    /// Unknown before server 3.2.
    KnownState redirectFromLegacyWebInterface = KnownState::Unknown;

    bool operator==(const ServerSettings&) const = default;
};

} // namespace quenvolta
