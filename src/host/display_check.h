#pragma once

namespace quenvolta
{

/// The status with which the program ends when there is no display.
inline constexpr int kNoDisplayStatus = 2;

/// While it lives: when the window system can't be opened, the program says so, names the way to do without one, and
/// ends with kNoDisplayStatus. (The toolkit would only abort.)
class DisplayCheck
{
public:
    DisplayCheck();
    ~DisplayCheck();
    DisplayCheck(const DisplayCheck&) = delete;
    DisplayCheck& operator=(const DisplayCheck&) = delete;
};

} // namespace quenvolta
