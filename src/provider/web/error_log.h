#pragma once

#include <QString>

namespace quenvolta
{

/// httpd's error log from a moment on.
class ErrorLog
{
public:
    /// The moment is now.
    explicit ErrorLog(const QString& path);

    /// What was written since, its end when it is long.
    QString NewLines() const { return LinesFrom(m_path, m_start); }

    /// The end of a log.
    static QString Tail(const QString& path) { return LinesFrom(path, 0); }

private:
    static QString LinesFrom(const QString& path, qint64 start);

    QString m_path;
    qint64 m_start;
};

} // namespace quenvolta
