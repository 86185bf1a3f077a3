#include "snapin/group_node.h"

#include "model/model.h"
#include "snapin/node_images.h"
#include "ui/messages.h"

namespace quenvolta
{

CGroupNode::CGroupNode(const NodeServices& services, QString name)
    : CBaseNodeItem(services, kImageGroup, Expandable::No)
    , m_name(std::move(name))
{
}

HRESULT CGroupNode::OnDelete(IConsole& /*console*/)
{
    if (Messages().ShowMessage({MessageIcon::Question, MessageButtons::YesNo}, StringId::kAskDeleteGroup, m_name) !=
        MessageAnswer::Yes)
        return S_FALSE;
    Model().DeleteGroup(m_name);
    return S_OK;
}

} // namespace quenvolta
