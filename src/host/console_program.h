#pragma once

#include "host/command_line.h"

namespace quenvolta
{

/// Runs the console on the server that the arguments name; the result is the program's exit status. Needs a
/// QApplication.
int RunConsole(const CommandLine& line);

} // namespace quenvolta
