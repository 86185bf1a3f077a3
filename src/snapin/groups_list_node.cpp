#include "snapin/groups_list_node.h"

#include "model/model.h"
#include "snapin/command_id.h"

#include <array>

namespace quenvolta
{

std::span<const CommandHandler<CGroupsListNode>> CGroupsListNode::Commands()
{
    static constexpr std::array kCommands{CommandHandler<CGroupsListNode>{
        CommandId::kCreateGroup, &CGroupsListNode::CreateGroup, DialogKind::CreateGroup}};
    return kCommands;
}

void CGroupsListNode::CreateGroup(IConsole& console)
{
    OpenDialog(DialogKind::CreateGroup, RequestFor(console));
}

QStringList CGroupsListNode::ReadNames()
{
    return Model().GetGroups();
}

} // namespace quenvolta
