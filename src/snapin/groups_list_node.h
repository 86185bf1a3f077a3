#pragma once

#include "snapin/account_list_node.h"
#include "snapin/group_node.h"

namespace quenvolta
{

/// "Groups": the list of the server's Subversion groups.
class CGroupsListNode final : public CAccountListNode<CGroupsListNode, CGroupNode>
{
public:
    static constexpr NodeType kNodeType{{0x8C2EC820, 0xA541, 0x49B3, 0x84, 0x10, 0x84, 0x7A, 0x73, 0x5B, 0xA8, 0x78},
                                        StringId::kGroupsName};
    static constexpr int kErrorTitle = StringId::kNoGroupsAccess;

    using CAccountListNode::CAccountListNode;

    static std::span<const CommandHandler<CGroupsListNode>> Commands();

protected:
    int GetMenuId() override { return MenuId::kGroups; }
    QStringList ReadNames() override;

private:
    void CreateGroup(IConsole& console);
};

} // namespace quenvolta
