#pragma once

#include "platform/hresult.h"
#include "platform/wbem/variant.h"

#include <cstdint>

namespace quenvolta
{

/// Convert a value as the platform does: DISP_E_TYPEMISMATCH for a value that is no number, DISP_E_OVERFLOW for one
/// that doesn't fit.
HRESULT ToBool(const Variant& value, bool* converted);
HRESULT ToUInt32(const Variant& value, std::uint32_t* converted);
HRESULT ToInt32(const Variant& value, std::int32_t* converted);

} // namespace quenvolta
