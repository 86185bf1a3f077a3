#pragma once

#include "platform/wbem/object_path.h"

#include <QList>
#include <QString>

namespace quenvolta
{

/// The path of an instance by its keys, relative to the namespace.
QString BuildObjectPath(const QString& className, const QList<PathKey>& keys);

/// The path of an instance whose key is "Name".
QString BuildObjectPath(const QString& className, const QString& name);

} // namespace quenvolta
