#pragma once

#include <QString>

#include <compare>
#include <cstdint>

namespace quenvolta
{

/// A dotted version; the first component that differs decides a comparison.
struct Version {
    std::int32_t major = 0;
    std::int32_t minor = 0;
    std::int32_t build = 0;
    std::int32_t revision = 0;

    auto operator<=>(const Version&) const = default;
};

/// The version of up to four dotted numbers. Empty components are skipped and what follows a component's digits is
/// ignored; a fifth component is a SimpleException.
Version ParseVersion(const QString& text);

constexpr Version MakeVersion(std::int32_t major, std::int32_t minor = 0, std::int32_t build = 0,
                              std::int32_t revision = 0)
{
    return {major, minor, build, revision};
}

/// True when `version` is `least` or newer.
constexpr bool IsAtLeast(const Version& version, const Version& least)
{
    return version >= least;
}

} // namespace quenvolta
