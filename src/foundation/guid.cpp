#include "foundation/guid.h"

namespace quenvolta
{

QUuid NewGuid()
{
    return QUuid::createUuid();
}

QString GuidToString(const QUuid& guid)
{
    return guid.toString(QUuid::WithBraces).toUpper();
}

} // namespace quenvolta
