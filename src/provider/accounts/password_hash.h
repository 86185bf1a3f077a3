#pragma once

#include <QByteArray>
#include <QString>

namespace quenvolta
{

/// Hashes of passwords as the web service checks them (bcrypt, "$2y$"). No copy of a password outlives the call.
class PasswordHash
{
public:
    /// Each step up doubles the time; 10 takes about a tenth of a second.
    static constexpr unsigned long kDefaultCost = 10;
    static constexpr unsigned long kLowestCost = 4;

    /// ProviderError when the password can't be used; `user` is named in it.
    static QByteArray Make(const QString& user, const QString& password, unsigned long cost = kDefaultCost);

    static bool Matches(const QString& password, const QByteArray& hash);
};

} // namespace quenvolta
