#pragma once

#include "provider/svn/svn_cancel.h"

#include <QString>

namespace quenvolta
{

/// Moves in a folder that must survive a crash, and that never replace anything.
class DurableFiles
{
public:
    /// Renames `from` in the folder `fromFolder` to `to` in `toFolder` (descriptors). A link is renamed itself. Returns
    /// 0, or the system's error number: EEXIST when `to` exists, whatever it is.
    static int MoveNoReplace(int fromFolder, const char* from, int toFolder, const char* to);

    /// Brings an open file or folder to the disk. Returns 0 or the system's error number.
    static int Sync(int descriptor);

    /// Hands to the disk all that waits for it on the file system of `path`: with thousands of new files, this first
    /// makes SyncTree many times faster. What fails shows there.
    static void SyncFileSystem(const QString& path);

    /// Brings all that is in the folder `path`, and itself, to the disk. Returns 0 or the system's error number;
    /// ProviderError when it was cancelled.
    static int SyncTree(const QString& path, const CancelCheck& cancel = {});
};

} // namespace quenvolta
