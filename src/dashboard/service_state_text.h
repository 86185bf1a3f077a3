#pragma once

#include <QString>

#include <cstdint>

namespace quenvolta
{

/// The word for a service's state: 1 stopped to 7 paused, any other is unexpected.
QString ServiceStateText(std::uint32_t state);

} // namespace quenvolta
