#pragma once

#include <QLatin1StringView>

namespace quenvolta
{

/// The result view type of the message view. An empty type asks for the standard list; any other one is the address
/// of a page ("res://module/number").
inline constexpr QLatin1StringView CLSID_MessageView("{B7A87232-4A51-11D1-A7EA-00C04FD909DD}");

} // namespace quenvolta
