#pragma once

#include "provider/unique_fd.h"

#include <QByteArray>
#include <QString>

namespace quenvolta
{

/// A folder among the repositories that no list shows: a repository is built in it before it gets its name, and is
/// moved into it before it is removed. It holds at most one repository, called kContent.
///
/// Its mode is 0700 and its owner holds a shared lock (flock) on it, so that what a crash left can be told from what is
/// in use. Its name is ".creating-" or ".deleting-" and 32 hexadecimal digits; no other name is ever taken for one of
/// these.
class HiddenFolder
{
public:
    static constexpr char kContent[] = "repository";
    static constexpr QStringView kCreating = u".creating-";
    static constexpr QStringView kDeleting = u".deleting-";

    /// Makes a new one in the folder `root`, of which `rootFd` is an open descriptor. Throws ProviderError.
    HiddenFolder(const QString& root, int rootFd, QStringView prefix);
    /// Removes the folder with all that is in it, as far as it can be removed.
    ~HiddenFolder();
    Q_DISABLE_COPY_MOVE(HiddenFolder)

    int Fd() const { return m_folder.Get(); }
    const QString& Path() const { return m_path; }
    QString ContentPath() const;

    /// Removes the folder with all that is in it, never following a link. Returns 0 or the system's error number.
    int Remove();

    /// Removes what processes that are no more left in the folder `root`; what can't be removed is logged and stays.
    /// Returns how many were removed.
    static int RemoveLeftovers(const QString& root);

private:
    QString m_path;
    UniqueFd m_folder;
};

} // namespace quenvolta
