#pragma once

#include <array>

namespace quenvolta
{

// The indexes of the console's image list that nodes use.
inline constexpr int kImageRoot = 0;
inline constexpr int kImageRepositories = 2; ///< the next one: with explicit permission entries, as below
inline constexpr int kImageRepository = 4;
inline constexpr int kImageFolder = 6;
inline constexpr int kImageFile = 8;
inline constexpr int kImageUser = 10;
inline constexpr int kImageGroup = 12;

/// The icon resource of each index.
inline constexpr std::array kImageResources{202, 202, 203, 204, 205, 206, 207, 208, 209, 210, 212, 213, 214, 215};

} // namespace quenvolta
