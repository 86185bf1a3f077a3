#pragma once

namespace quenvolta
{

/// What became of creating a user.
enum class UserCreation {
    Created = 0,
    AlreadyExists = 1,
};

/// What became of creating a group.
enum class GroupCreation {
    Created = 0,
    AlreadyExists = 1,
    /// The group would be a member of itself, perhaps through others.
    MembersHaveCycles = 2,
};

/// What became of setting a group's members.
enum class MembershipChange {
    Done = 0,
    NoSuchGroup = 1,
    MembersHaveCycles = 2,
};

} // namespace quenvolta
