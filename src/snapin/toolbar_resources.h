#pragma once

#include "platform/mmc/controlbar.h"

#include <QList>

namespace quenvolta
{

// The toolbars of resources/toolbars.def.
namespace ToolbarId
{
inline constexpr int kServices = 211;
inline constexpr int kCommandPrompt = 215;
inline constexpr int kServerProperties = 216;
inline constexpr int kRepositoriesProperties = 217;
inline constexpr int kEntryProperties = 219;
} // namespace ToolbarId

/// The buttons of a toolbar, in their order.
QList<MMCBUTTON> ToolbarButtons(int toolbar);

} // namespace quenvolta
