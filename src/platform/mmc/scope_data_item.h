#pragma once

#include "platform/mmc/mmc_types.h"

#include <QString>

#include <cstdint>

namespace quenvolta
{

// Which members of a scope item count.
inline constexpr std::uint32_t SDI_STR = 0x2;
inline constexpr std::uint32_t SDI_IMAGE = 0x4;
inline constexpr std::uint32_t SDI_OPENIMAGE = 0x8;
inline constexpr std::uint32_t SDI_PARAM = 0x20;
inline constexpr std::uint32_t SDI_CHILDREN = 0x40;
// Where an item is inserted: below `relativeID`, after its last child; or beside `relativeID`.
inline constexpr std::uint32_t SDI_PARENT = 0x0;
inline constexpr std::uint32_t SDI_PREVIOUS = 0x10000000; ///< `relativeID` is the sibling before it
inline constexpr std::uint32_t SDI_NEXT = 0x20000000;     ///< `relativeID` is the sibling after it

/// A description of an item of the scope tree. The console never keeps the name: it asks the snap-in whenever it
/// shows it, and `displayname` is the answer.
struct SCOPEDATAITEM {
    std::uint32_t mask = 0;
    QString displayname;
    int nImage = 0;
    int nOpenImage = 0;
    /// With SDI_CHILDREN: 0 for an item that can't be expanded.
    int cChildren = 0;
    MMC_COOKIE lParam = nullptr;
    HSCOPEITEM relativeID = 0;
    HSCOPEITEM ID = 0;
};

} // namespace quenvolta
