#pragma once

#include <QString>

namespace quenvolta
{

/// Writes the snap-in's entries into this computer's registry, or removes them; the result is the program's exit
/// status.
int ChangeRegistration(bool registers, const QString& program);

} // namespace quenvolta
