#pragma once

#include <QString>
#include <QStringView>

namespace quenvolta
{

/// The kinds of a directory's objects, as they are named on the wire.
namespace directorykinds
{
inline constexpr QStringView kUser = u"user";
inline constexpr QStringView kGroup = u"group";
inline constexpr QStringView kComputer = u"computer"; ///< a computer's account
inline constexpr QStringView kHost = u"host";         ///< a computer's name
} // namespace directorykinds

/// An account or computer that the server's system knows. What it doesn't have is empty.
struct DirectoryEntry {
    QString kind = {};
    QString name = {};
    QString fullName = {};
    QString sid = {};
    QString dnsHostName = {};
};

} // namespace quenvolta
