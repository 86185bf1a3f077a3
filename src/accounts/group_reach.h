#pragma once

#include "model/group_member.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace quenvolta
{

/// A user that belongs to a group.
struct ReachedUser {
    QString name = {};
    /// The groups that lead to the user, the outer one first, by the shortest way; empty for a direct member.
    QStringList through = {};

    bool operator==(const ReachedUser&) const = default;
};

/// The users that these members mean, directly or through groups, each once, by name. A group's members are asked once;
/// what that throws reaches the caller.
QList<ReachedUser> FindReachedUsers(const QList<GroupMember>& members,
                                    const std::function<QList<GroupMember>(const QString& group)>& membersOf);

} // namespace quenvolta
