#include "foundation/server_not_installed_exception.h"

#include "foundation/format.h"

namespace quenvolta
{

QString ServerNotInstalledException::GetMessage() const
{
    return m_computerName.isEmpty() ? Format(u"Quenvolta Server is not installed on the local computer")
                                    : Format(u"Quenvolta Server is not installed on the computer '%s'", m_computerName);
}

} // namespace quenvolta
