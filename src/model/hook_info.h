#pragma once

#include <QString>

namespace quenvolta
{

/// The hook scripts of a repository; the numbers are the server's.
enum class HookKind {
    PostCommit = 0,
    PostLock = 1,
    PostRevisionPropertyChange = 2,
    PostUnlock = 3,
    PreCommit = 4,
    PreLock = 5,
    PreRevisionPropertyChange = 6,
    PreUnlock = 7,
    StartCommit = 8,
};

inline constexpr int kHookKindCount = 9;

/// One hook script of a repository.
struct HookInfo {
    QString text = {};
    /// The repository has this hook; a script may be empty.
    bool configured = false;

    bool operator==(const HookInfo&) const = default;
};

} // namespace quenvolta
