#pragma once

#include <QByteArray>
#include <QString>

namespace quenvolta
{

/// What the standalone snap-in keeps in a console file (docs/console-file.md): the managed computer.
QByteArray WriteSnapInStream(const QString& computer);

/// The computer of a stream, empty for the local one. A stream that isn't understood is a SimpleException that says
/// what is wrong with it.
QString ReadSnapInStream(const QByteArray& stream);

} // namespace quenvolta
