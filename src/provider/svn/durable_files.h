#pragma once

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

    /// Brings all that is in the folder `path`, and itself, to the disk. Returns 0 or the system's error number.
    static int SyncTree(const QString& path);
};

} // namespace quenvolta
