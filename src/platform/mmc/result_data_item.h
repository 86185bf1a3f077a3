#pragma once

#include "platform/mmc/mmc_types.h"

#include <QString>

#include <cstdint>

namespace quenvolta
{

// Which members of a result item count.
inline constexpr std::uint32_t RDI_STR = 0x2;
inline constexpr std::uint32_t RDI_IMAGE = 0x4;
inline constexpr std::uint32_t RDI_PARAM = 0x10;

/// A description of an item of the result list, or a question about one: `str` is the text of column `nCol`.
struct RESULTDATAITEM {
    std::uint32_t mask = 0;
    /// True for an item of the scope tree that is listed in its parent's result list.
    bool bScopeItem = false;
    HRESULTITEM itemID = 0;
    int nCol = 0;
    QString str;
    int nImage = 0;
    MMC_COOKIE lParam = nullptr;
};

} // namespace quenvolta
