#pragma once

#include "model/server_settings.h"

#include <cstdint>

namespace quenvolta
{

/// The web service's settings and its state, read together.
struct ServerStatus {
    ServerSettings settings;
    /// 1 stopped to 7 paused.
    std::uint32_t serviceState = 0;
};

} // namespace quenvolta
