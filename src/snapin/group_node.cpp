#include "snapin/group_node.h"

#include "model/model.h"
#include "snapin/command_id.h"
#include "snapin/node_images.h"
#include "ui/messages.h"

#include <array>

namespace quenvolta
{

CGroupNode::CGroupNode(const NodeServices& services, QString name)
    : CBaseNodeItem(services, kImageGroup, Expandable::No)
    , m_name(std::move(name))
{
}

std::span<const CommandHandler<CGroupNode>> CGroupNode::Commands()
{
    static constexpr std::array kCommands{
        CommandHandler<CGroupNode>{CommandId::kEditGroup, &CGroupNode::Edit, DialogKind::EditGroup}};
    return kCommands;
}

void CGroupNode::Edit(IConsole& console)
{
    DialogRequest request = RequestFor(console);
    request.account = m_name;
    OpenDialog(DialogKind::EditGroup, request);
}

HRESULT CGroupNode::OnDblClick(IConsole& console)
{
    return Command(console, CommandId::kEditGroup);
}

void CGroupNode::DeleteUnasked()
{
    Model().DeleteGroup(m_name);
}

HRESULT CGroupNode::OnDelete(IConsole& /*console*/)
{
    if (Messages().ShowMessage({MessageIcon::Question, MessageButtons::YesNo}, StringId::kAskDeleteGroup, m_name) !=
        MessageAnswer::Yes)
        return S_FALSE;
    DeleteUnasked();
    return S_OK;
}

} // namespace quenvolta
