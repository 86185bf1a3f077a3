#pragma once

#include <QDir>
#include <QFileInfo>
#include <QString>

namespace quenvolta
{

/// What QTemporaryDir makes a folder of, in memory where the system has such a place: for tests with thousands of
/// changes that are about their order, or about processes that end, and not about the disk.
inline QString MemoryFolder()
{
    const QString memory = QStringLiteral("/dev/shm");
    const QFileInfo folder(memory);
    return (folder.isDir() && folder.isWritable() ? memory : QDir::tempPath()) + QStringLiteral("/quenvolta-XXXXXX");
}

} // namespace quenvolta
