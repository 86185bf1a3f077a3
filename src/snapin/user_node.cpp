#include "snapin/user_node.h"

#include "model/model.h"
#include "snapin/node_images.h"
#include "ui/messages.h"

namespace quenvolta
{

CUserNode::CUserNode(const NodeServices& services, QString name)
    : CBaseNodeItem(services, kImageUser, Expandable::No)
    , m_name(std::move(name))
{
}

HRESULT CUserNode::OnDelete(IConsole& /*console*/)
{
    if (Messages().ShowMessage({MessageIcon::Question, MessageButtons::YesNo}, StringId::kAskDeleteUser, m_name) !=
        MessageAnswer::Yes)
        return S_FALSE;
    Model().DeleteUser(m_name);
    return S_OK;
}

} // namespace quenvolta
