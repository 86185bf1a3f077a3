#pragma once

#include "foundation/version.h"

#include <array>
#include <cstdint>

namespace quenvolta
{

/// What a server can do, as masks of a 32-bit word.

namespace ServerCapability
{

inline constexpr std::uint32_t kAuthenticationParameters = 0x1;
inline constexpr std::uint32_t kRestartService = 0x2;
inline constexpr std::uint32_t kCertificateText = 0x4;
inline constexpr std::uint32_t kRepositoryRename = 0x10;
inline constexpr std::uint32_t kPermissionState = 0x20;
inline constexpr std::uint32_t kDelegation = 0x40;
inline constexpr std::uint32_t kCertificateAdditionalNames = 0x100;
inline constexpr std::uint32_t kRepositoryType = 0x200;
inline constexpr std::uint32_t kQdfs = 0x400;
inline constexpr std::uint32_t kRepositoryImport = 0x800;
inline constexpr std::uint32_t kReplicationPartners = 0x2000;
inline constexpr std::uint32_t kRepositorySupervisors = 0x4000;
inline constexpr std::uint32_t kDomainController = 0x8000;
inline constexpr std::uint32_t kServerAdmins = 0x10000;
inline constexpr std::uint32_t kImportTypes = 0x20000;
inline constexpr std::uint32_t kReplicationSeed = 0x40000;
inline constexpr std::uint32_t kLegacyRedirect = 0x80000;
inline constexpr std::uint32_t kSlaveImport = 0x100000;
inline constexpr std::uint32_t kChangeMaster = 0x200000;
inline constexpr std::uint32_t kRepositoryLocks = 0x400000;

} // namespace ServerCapability

/// Capabilities and the server version that brought them.
struct CapabilityRow {
    std::uint32_t mask;
    Version since;
};

inline constexpr std::array kCapabilityTable{
    CapabilityRow{0x1, MakeVersion(2, 1)},
    CapabilityRow{0x2 | 0x4, MakeVersion(2, 2)},
    CapabilityRow{0x8 | 0x10 | 0x20, MakeVersion(2, 6)},
    CapabilityRow{0x40 | 0x80, MakeVersion(2, 7)},
    CapabilityRow{0x100, MakeVersion(2, 8)},
    CapabilityRow{0xBE00, MakeVersion(3, 0)},
    CapabilityRow{0x3F4000, MakeVersion(3, 2)},
    CapabilityRow{0x400000, MakeVersion(3, 3)},
};

/// The capabilities of a server of the version.
constexpr std::uint32_t CapabilitiesOf(const Version& version)
{
    std::uint32_t capabilities = 0;
    for (const CapabilityRow& row : kCapabilityTable) {
        if (IsAtLeast(version, row.since))
            capabilities |= row.mask;
    }
    return capabilities;
}

/// How permissions are kept: 2 from server 2.7 on, 1 from 2.6 on, else 0.
constexpr std::uint32_t FeatureLevelOf(const Version& version)
{
    return IsAtLeast(version, MakeVersion(2, 7)) ? 2 : IsAtLeast(version, MakeVersion(2, 6)) ? 1 : 0;
}

} // namespace quenvolta
