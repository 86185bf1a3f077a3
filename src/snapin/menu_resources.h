#pragma once

#include "platform/mmc/context_menu.h"
#include "snapin/command_state.h"

#include <QString>

#include <functional>

namespace quenvolta
{

// The menus of resources/menus.def.
namespace MenuId
{
inline constexpr int kRoot = 201;
inline constexpr int kExtensionRoot = 104;
inline constexpr int kRepositories = 103;
inline constexpr int kRepositoriesWithoutPermissions = 240;
inline constexpr int kRepository = 110;
inline constexpr int kFolder = 105;
inline constexpr int kFile = 239;
inline constexpr int kUsers = 106;
inline constexpr int kUser = 107;
inline constexpr int kGroups = 108;
inline constexpr int kGroup = 109;
inline constexpr int kSeveralEntries = 2001;
} // namespace MenuId

/// Adds the items of a menu, at the insertion points that are allowed, in the states that `stateOf` gives. The first
/// failure of the callback ends it.
HRESULT AddMenuResource(int menu, std::uint32_t insertionAllowed, IContextMenuCallback& callback,
                        const std::function<CommandState(int command)>& stateOf);

/// What the status bar says of a command; empty for one that explains itself.
QString StatusTextOfCommand(int command);

} // namespace quenvolta
