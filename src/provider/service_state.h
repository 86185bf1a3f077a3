#pragma once

#include <cstdint>

namespace quenvolta
{

/// The numbers of a service's states that the classes tell.
enum class ServiceState : std::uint32_t { Stopped = 1, StartPending = 2, StopPending = 3, Running = 4 };

} // namespace quenvolta
