#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUuid>

namespace quenvolta
{

/// What a console file holds (docs/console-file.md): the snap-ins of a console with their streams.
struct ConsoleFile {
    struct SnapIn {
        QUuid classId;
        QByteArray stream;

        bool operator==(const SnapIn&) const = default;
    };

    QList<SnapIn> snapIns;

    bool operator==(const ConsoleFile&) const = default;
};

QByteArray EncodeConsoleFile(const ConsoleFile& file);
/// Bytes that aren't a console file are a SimpleException that says what is wrong with them.
ConsoleFile DecodeConsoleFile(const QByteArray& bytes);

/// Failures are SimpleExceptions that name the file.
ConsoleFile ReadConsoleFile(const QString& fileName);
void WriteConsoleFile(const QString& fileName, const ConsoleFile& file);

} // namespace quenvolta
