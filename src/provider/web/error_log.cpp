#include "provider/web/error_log.h"

#include <QFile>
#include <QFileInfo>

namespace quenvolta
{

ErrorLog::ErrorLog(const QString& path)
    : m_path(path)
    , m_start(QFileInfo(path).size())
{
}

QString ErrorLog::LinesFrom(const QString& path, qint64 start)
{
    constexpr qint64 kLongest = 4096;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    file.seek(qMax(start, file.size() - kLongest));
    return QString::fromUtf8(file.read(kLongest)).trimmed();
}

} // namespace quenvolta
