#pragma once

#include <cstdint>

namespace quenvolta
{

/// The start mode of a service that starts with its computer.
inline constexpr std::uint32_t kStartModeAutomatic = 2;
/// The start mode of a service that is disabled.
inline constexpr std::uint32_t kStartModeDisabled = 4;

/// A service's state and how it starts.
struct ServiceStatus {
    /// 1 stopped, 2 start pending, 3 stop pending, 4 running, 5 continue pending, 6 pause pending, 7 paused.
    std::uint32_t state = 0;
    /// 2 automatic, 3 manual, 4 disabled.
    std::uint32_t startMode = 0;
};

/// A service's state and how it last ended.
struct ServiceExitState {
    /// A Win32 error, 0 for none.
    std::uint32_t exitCode = 0;
    std::uint32_t state = 0;
};

} // namespace quenvolta
