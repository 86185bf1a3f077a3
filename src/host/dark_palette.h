#pragma once

namespace quenvolta
{

/// Gives the application dark colours, whatever the desktop's are.
void UseDarkPalette();

} // namespace quenvolta
