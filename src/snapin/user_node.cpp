#include "snapin/user_node.h"

#include "model/model.h"
#include "snapin/command_id.h"
#include "snapin/node_images.h"
#include "ui/messages.h"

#include <array>

namespace quenvolta
{

CUserNode::CUserNode(const NodeServices& services, QString name)
    : CBaseNodeItem(services, kImageUser, Expandable::No)
    , m_name(std::move(name))
{
}

std::span<const CommandHandler<CUserNode>> CUserNode::Commands()
{
    static constexpr std::array kCommands{
        CommandHandler<CUserNode>{CommandId::kSetPassword, &CUserNode::SetPassword, DialogKind::SetPassword}};
    return kCommands;
}

void CUserNode::SetPassword(IConsole& console)
{
    DialogRequest request = RequestFor(console);
    request.account = m_name;
    OpenDialog(DialogKind::SetPassword, request);
}

void CUserNode::DeleteUnasked()
{
    Model().DeleteUser(m_name);
}

HRESULT CUserNode::OnDelete(IConsole& /*console*/)
{
    if (Messages().ShowMessage({MessageIcon::Question, MessageButtons::YesNo}, StringId::kAskDeleteUser, m_name) !=
        MessageAnswer::Yes)
        return S_FALSE;
    DeleteUnasked();
    return S_OK;
}

} // namespace quenvolta
