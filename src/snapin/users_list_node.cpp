#include "snapin/users_list_node.h"

#include "model/model.h"

namespace quenvolta
{

QStringList CUsersListNode::ReadNames()
{
    return Model().GetUsers();
}

} // namespace quenvolta
