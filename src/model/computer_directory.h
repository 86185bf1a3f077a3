#pragma once

#include "wmi/wmi_class_cache.h"
#include "wmi/wmi_connection.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

namespace quenvolta
{

enum class DirectoryObjectKind {
    User,
    Group,
    Computer, ///< a computer's account
    Host,     ///< a computer's name, without an account
};

/// An account or a computer that the managed computer knows. What it doesn't have is empty.
struct DirectoryObject {
    DirectoryObjectKind kind = DirectoryObjectKind::User;
    QString domain = {};
    QString name = {};
    QString fullName = {};
    /// The security identifier in its string form.
    QString sid = {};
    QString dnsHostName = {};

    bool operator==(const DirectoryObject&) const = default;
};

struct DirectoryAnswer {
    /// The best first.
    QList<DirectoryObject> objects;
    /// False when there are more.
    bool complete = true;
};

/// A search that the managed computer carries out. It is asked now and then whether it ended.
class DirectorySearch
{
public:
    explicit DirectorySearch(WbemCallResultPtr result);

    /// What was found, or nothing as long as the search goes on. ComException when it failed.
    std::optional<DirectoryAnswer> TakeAnswer();

private:
    WbemCallResultPtr m_result;
};

/// Finds accounts and computers on the managed computer. Nothing lists them all: a directory can be huge.
class CComputerDirectory
{
public:
    /// The connection is one to the computer's standard namespace.
    explicit CComputerDirectory(WMIConnection connection);
    CComputerDirectory(const CComputerDirectory&) = delete;
    CComputerDirectory& operator=(const CComputerDirectory&) = delete;

    /// Begins to look for what has the text in its name or full name. At most `maxObjects` (1 to 500) are found.
    DirectorySearch Search(const QString& text, const QList<DirectoryObjectKind>& kinds, std::int32_t maxObjects);
    /// The accounts of the identifiers; those that nobody has are left out.
    QList<DirectoryObject> Resolve(const QStringList& sids);

private:
    WMIConnection m_connection;
    WMIClassCache m_class;
};

} // namespace quenvolta
