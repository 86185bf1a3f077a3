#pragma once

#include <QString>

namespace quenvolta
{

/// The data folder of this computer's server, whether it exists or not.
QString ServerDataPath();

} // namespace quenvolta
