#include "snapin/groups_list_node.h"

#include "model/model.h"

namespace quenvolta
{

QStringList CGroupsListNode::ReadNames()
{
    return Model().GetGroups();
}

} // namespace quenvolta
