#pragma once

#include "snapin/dialogs.h"

namespace quenvolta
{

class IConsole;

/// A row of a node's command map.
template <typename T>
struct CommandHandler {
    int command;
    void (T::*run)(IConsole& console);
    /// The dialog without which there is nothing to run.
    DialogKind dialog = DialogKind::None;
};

} // namespace quenvolta
