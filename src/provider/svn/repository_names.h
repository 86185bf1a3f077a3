#pragma once

#include <QString>
#include <QStringView>

namespace quenvolta
{

/// What may name a repository, or an entry in one. Names come from outside; every refusal is a ProviderError
/// (WBEM_E_INVALID_PARAMETER) that shows the name escaped and shortened and says what is wrong with it.
class RepositoryNames
{
public:
    /// Refuses what can't name an entry of the repositories' folder: empty, with a slash, a control character or half
    /// of a character, beginning with a period (such names are the store's own), longer than 255 bytes of UTF-8.
    static void CheckName(QStringView name);

    /// As CheckName, and refuses what a repository shall not be called from now on: with a backslash, colon or square
    /// bracket (permission rules have no way to quote them), ending with a period, or with a blank at either end.
    /// A repository that came with such a name can still be listed, read, renamed and deleted.
    static void CheckNewName(QStringView name);

    /// Refuses what isn't the canonical absolute path ("/", "/a/b") of an entry, or is longer than 4096 bytes of UTF-8.
    static void CheckPath(QStringView path);

    /// As CheckPath, and refuses a path with an element of more than 255 bytes: no working copy could hold it.
    static void CheckNewPath(QStringView path);

    /// The parent's path of a canonical path; empty for "/".
    static QString ParentOf(const QString& path);

    /// `text` fit to stand in a message: what can't be printed as \uXXXX, at most `most` characters of it.
    static QString Show(QStringView text, qsizetype most = 64);

    /// As Show, for a path on the server's disk, which is of no use when it is shortened.
    static QString ShowFile(QStringView path) { return Show(path, 1024); }
};

} // namespace quenvolta
