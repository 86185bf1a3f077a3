#pragma once

#include "snapin/account_list_node.h"
#include "snapin/user_node.h"

namespace quenvolta
{

/// "Users": the list of the server's Subversion users.
class CUsersListNode final : public CAccountListNode<CUsersListNode, CUserNode>
{
public:
    static constexpr NodeType kNodeType{{0xE9EDD1AC, 0x9D38, 0x4339, 0xBF, 0xEB, 0x82, 0x61, 0x9E, 0xAA, 0xAF, 0xE3},
                                        StringId::kUsersName};
    static constexpr int kErrorTitle = StringId::kNoUsersAccess;

    using CAccountListNode::CAccountListNode;

    static std::span<const CommandHandler<CUsersListNode>> Commands();

protected:
    int GetMenuId() override { return MenuId::kUsers; }
    QStringList ReadNames() override;

private:
    void CreateUser(IConsole& console);
};

} // namespace quenvolta
