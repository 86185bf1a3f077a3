#pragma once

#include <cstdint>

namespace quenvolta
{

/// A snap-in's own object behind an item.
class ISnapInItem
{
public:
    virtual ~ISnapInItem() = default;
};

/// The console's identifier of an item of the scope tree; 0 is none. An identifier is never used twice.
using HSCOPEITEM = std::int64_t;
/// The console's identifier of an item that was inserted into the result list; 0 is none.
using HRESULTITEM = std::int64_t;
/// What a snap-in gives with an item and gets back with it; null for the static root.
using MMC_COOKIE = ISnapInItem*;

/// What a data object stands for.
enum class DATA_OBJECT_TYPES {
    CCT_SCOPE,
    CCT_RESULT,
};

} // namespace quenvolta
