#pragma once

#include <QString>

namespace quenvolta
{

/// A text file of the page's resources; a missing one is a SimpleException.
QString DashboardFile(const QString& name);

} // namespace quenvolta
