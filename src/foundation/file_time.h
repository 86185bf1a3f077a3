#pragma once

#include <cstdint>

namespace quenvolta
{

/// A moment in UTC: 100-nanosecond units since 1601-01-01.
using FileTime = std::int64_t;

inline constexpr FileTime kFileTimePerMillisecond = 10'000;
inline constexpr FileTime kFileTimePerMinute = 600'000'000;

/// A moment given as milliseconds since 1970-01-01.
constexpr FileTime FileTimeFromUnixMilliseconds(std::int64_t milliseconds)
{
    constexpr std::int64_t kUnixEpoch = 11'644'473'600'000; // 1970-01-01 in milliseconds since 1601-01-01
    return (milliseconds + kUnixEpoch) * kFileTimePerMillisecond;
}

/// The same moment as milliseconds since 1970-01-01.
constexpr std::int64_t UnixMillisecondsFromFileTime(FileTime time)
{
    return (time - FileTimeFromUnixMilliseconds(0)) / kFileTimePerMillisecond;
}

/// The current time.
FileTime CurrentFileTime();

} // namespace quenvolta
