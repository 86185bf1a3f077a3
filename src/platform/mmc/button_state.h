#pragma once

namespace quenvolta
{

/// The states of a verb or a toolbar button.
enum class MMC_BUTTON_STATE {
    ENABLED,
    HIDDEN,
};

} // namespace quenvolta
