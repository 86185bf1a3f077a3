#pragma once

#include "provider/accounts/account_model.h"

#include <QByteArray>
#include <QString>

namespace quenvolta
{

/// The accounts as they are kept in a file, see docs/server-data.md.
class AccountDocument
{
public:
    static QByteArray Write(const AccountModel& model);

    /// ProviderError that names the file `path` and what is wrong with it; nothing that isn't whole is taken.
    static AccountModel Read(const QByteArray& content, const QString& path);
};

} // namespace quenvolta
