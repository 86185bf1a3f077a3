#include "snapin/users_list_node.h"

#include "model/model.h"
#include "snapin/command_id.h"

#include <array>

namespace quenvolta
{

std::span<const CommandHandler<CUsersListNode>> CUsersListNode::Commands()
{
    static constexpr std::array kCommands{
        CommandHandler<CUsersListNode>{CommandId::kCreateUser, &CUsersListNode::CreateUser, DialogKind::CreateUser}};
    return kCommands;
}

void CUsersListNode::CreateUser(IConsole& console)
{
    OpenDialog(DialogKind::CreateUser, RequestFor(console));
}

QStringList CUsersListNode::ReadNames()
{
    return Model().GetUsers();
}

} // namespace quenvolta
