#pragma once

namespace quenvolta
{

// The columns of the list of repositories.
inline constexpr int kNameColumn = 0;
inline constexpr int kRevisionsColumn = 1;
inline constexpr int kTypeColumn = 2;

} // namespace quenvolta
