#pragma once

#include <QString>
#include <QUuid>

namespace quenvolta
{

/// A new random identifier.
QUuid NewGuid();

/// The identifier's text: 38 characters, upper-case digits in braces.
QString GuidToString(const QUuid& guid);

} // namespace quenvolta
