#include "foundation/account_directory.h"

#include "foundation/win32_exception.h"

namespace quenvolta
{

AccountName LookupAccountName(const IcAccountDirectory& directory, const Sid& sid, const QString& computerName)
{
    AccountName name;
    if (const std::int32_t error = directory.LookupSid(sid, computerName, &name); error != 0)
        throw Win32Exception(error);
    return name;
}

} // namespace quenvolta
