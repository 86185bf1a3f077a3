#pragma once

namespace quenvolta
{

/// Whether a command of a node can be run.
enum class CommandState {
    Enabled,
    Grayed,
    /// Left out of menus and toolbars.
    Hidden,
};

} // namespace quenvolta
