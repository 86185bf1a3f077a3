#pragma once

#include "foundation/account_directory.h"

namespace quenvolta
{

/// The local computer's accounts: S-1-22-1-<uid> is a user and S-1-22-2-<gid> a group, the domain is the host name.
class SystemAccountDirectory final : public IcAccountDirectory
{
public:
    /// Another computer's accounts aren't known here (1722).
    std::int32_t LookupSid(const Sid& sid, const QString& computerName, AccountName* name) const override;
};

} // namespace quenvolta
