#pragma once

#include <QString>

namespace quenvolta
{

enum class GroupMemberKind {
    User = 0,
    Group = 1,
};

/// A Subversion user or group inside a group.
struct GroupMember {
    GroupMemberKind kind = GroupMemberKind::User;
    QString name = {};

    bool operator==(const GroupMember&) const = default;
};

} // namespace quenvolta
