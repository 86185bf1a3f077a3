#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

namespace quenvolta
{

class ConsoleWindow;

/// Shows the item that the names lead to from the root, every item on the way opened. A name that isn't there is a
/// SimpleException.
void ShowItemAt(ConsoleWindow& window, const QStringList& names);

/// Writes a picture of the window. A file that can't be written is a SimpleException.
void WritePicture(ConsoleWindow& window, const QSize& size, const QString& fileName);

} // namespace quenvolta
