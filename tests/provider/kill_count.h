#pragma once

#include <QtGlobal>

namespace quenvolta
{

/// How often a test kills a process: QUENVOLTA_KILLS (tests/soak/kill-providers sets it), else what is quick.
inline int KillCount(int quick)
{
    const int wanted = qEnvironmentVariableIntValue("QUENVOLTA_KILLS");
    return wanted > 0 ? wanted : quick;
}

} // namespace quenvolta
