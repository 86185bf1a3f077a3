#pragma once

#include "foundation/sid.h"

#include <QString>

#include <cstdint>

namespace quenvolta
{

/// The names of an account.
struct AccountName {
    QString account;
    QString domain;

    bool operator==(const AccountName&) const = default;
};

/// Where accounts are looked up.
class IcAccountDirectory
{
public:
    virtual ~IcAccountDirectory() = default;
    /// 0 and the names, or a Win32 error: 1332 when no account has the identifier. An empty computer name is the local
    /// computer.
    virtual std::int32_t LookupSid(const Sid& sid, const QString& computerName, AccountName* name) const = 0;
};

/// The names of an account; Win32Exception when they can't be had.
AccountName LookupAccountName(const IcAccountDirectory& directory, const Sid& sid, const QString& computerName);

} // namespace quenvolta
