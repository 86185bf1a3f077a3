#include "accounts/group_reach.h"

#include <QSet>

#include <algorithm>

namespace quenvolta
{

QList<ReachedUser> FindReachedUsers(const QList<GroupMember>& members,
                                    const std::function<QList<GroupMember>(const QString& group)>& membersOf)
{
    struct Step {
        QList<GroupMember> members;
        QStringList through;
    };
    QList<ReachedUser> users;
    QSet<QString> knownUsers;
    QSet<QString> knownGroups;
    QList<Step> steps{{members, {}}};
    for (qsizetype i = 0; i < steps.size(); ++i) { // breadth first, so that the first way is the shortest
        const Step step = steps[i];
        for (const GroupMember& member : step.members) {
            QSet<QString>& known = member.kind == GroupMemberKind::Group ? knownGroups : knownUsers;
            if (known.contains(member.name))
                continue;
            known.insert(member.name);
            if (member.kind == GroupMemberKind::Group)
                steps.append({membersOf(member.name), step.through + QStringList{member.name}});
            else
                users.append({member.name, step.through});
        }
    }
    std::ranges::sort(users, [](const ReachedUser& left, const ReachedUser& right) {
        const int order = left.name.compare(right.name, Qt::CaseInsensitive);
        return order != 0 ? order < 0 : left.name < right.name;
    });
    return users;
}

} // namespace quenvolta
