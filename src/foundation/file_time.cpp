#include "foundation/file_time.h"

#include <QDateTime>

namespace quenvolta
{

FileTime CurrentFileTime()
{
    return FileTimeFromUnixMilliseconds(QDateTime::currentMSecsSinceEpoch());
}

} // namespace quenvolta
