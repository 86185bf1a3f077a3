#pragma once

#include <cstdint>

namespace quenvolta
{

/// The Win32 errors that the console raises itself.
inline constexpr std::int32_t ERROR_INVALID_DATA = 13;
inline constexpr std::int32_t ERROR_WRITE_FAULT = 29;
inline constexpr std::int32_t ERROR_HANDLE_EOF = 38;
inline constexpr std::int32_t ERROR_INVALID_PARAMETER = 87;
inline constexpr std::int32_t ERROR_NONE_MAPPED = 1332;
inline constexpr std::int32_t ERROR_INVALID_SID = 1337;
inline constexpr std::int32_t RPC_S_SERVER_UNAVAILABLE_ERROR = 1722;

} // namespace quenvolta
