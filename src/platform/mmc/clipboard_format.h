#pragma once

#include <QLatin1StringView>

namespace quenvolta
{

// What a data object can be asked for.
inline constexpr QLatin1StringView CCF_NODETYPE("CCF_NODETYPE");               ///< the node type, 16 bytes
inline constexpr QLatin1StringView CCF_SZNODETYPE("CCF_SZNODETYPE");           ///< its text, UTF-16 with a zero
inline constexpr QLatin1StringView CCF_DISPLAY_NAME("CCF_DISPLAY_NAME");       ///< UTF-16 with a zero
inline constexpr QLatin1StringView CCF_SNAPIN_CLASSID("CCF_SNAPIN_CLASSID");   ///< 16 bytes
inline constexpr QLatin1StringView CCF_SNAPIN_PRELOADS("CCF_SNAPIN_PRELOADS"); ///< a boolean, 4 bytes
/// Answered by an object that stands for several items: a boolean, 4 bytes.
inline constexpr QLatin1StringView CCF_MMC_MULTISELECT_DATAOBJECT("CCF_MMC_MULTISELECT_DATAOBJECT");
/// Answered by an object of this process that knows its item: a boolean, 4 bytes.
inline constexpr QLatin1StringView CCF_GETOBJECTDATA("CCF_GETOBJECTDATA");
/// Answered by the node of a computer: its name, UTF-16 with a zero; empty for the local one.
inline constexpr QLatin1StringView MMC_SNAPIN_MACHINE_NAME("MMC_SNAPIN_MACHINE_NAME");

} // namespace quenvolta
