#pragma once

#include <QString>

namespace quenvolta
{

class Registry;

// The snap-in's own entries in the local machine's registry (resources/registration.def): all of them are made or
// none. Failures are Win32Exceptions.
void RegisterSnapIn(Registry& localMachine, const QString& module);
void UnregisterSnapIn(Registry& localMachine);

} // namespace quenvolta
