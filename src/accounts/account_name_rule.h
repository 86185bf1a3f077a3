#pragma once

#include <QStringView>

namespace quenvolta
{

/// True for the name of a Subversion user or group that can be created: not empty, and of ASCII letters, digits, "-",
/// "." and "_" alone.
bool IsValidAccountName(QStringView name);

} // namespace quenvolta
