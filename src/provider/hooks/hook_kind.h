#pragma once

#include <QtGlobal>

#include <array>

namespace quenvolta
{

/// The names of the hook scripts, by the numbers that the contract gives them.
inline constexpr std::array<const char*, 9> kHookNames{"post-commit",        "post-lock",  "post-revprop-change",
                                                       "post-unlock",        "pre-commit", "pre-lock",
                                                       "pre-revprop-change", "pre-unlock", "start-commit"};

} // namespace quenvolta
