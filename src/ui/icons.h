#pragma once

#include <QIcon>
#include <QString>

namespace quenvolta
{

/// The icon of a resource number; an empty one for a number that is no icon's.
QIcon IconResource(int number);

/// The icon of a name ("app").
QIcon IconNamed(const QString& name);

} // namespace quenvolta
