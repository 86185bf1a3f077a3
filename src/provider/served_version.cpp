#include "provider/served_version.h"

#include "foundation/version.h"

namespace quenvolta
{

ServedVersion::ServedVersion()
    : ServedVersion(QStringLiteral(QUENVOLTA_VERSION))
{
}

ServedVersion::ServedVersion(const QString& text)
    : m_text(text)
{
    const Version version = ParseVersion(text);
    m_table = {version.major, version.minor};
}

} // namespace quenvolta
