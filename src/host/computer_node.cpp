#include "host/computer_node.h"

#include "host/computer_component.h"
#include "host/computer_data_object.h"
#include "ui/string_table.h"

namespace quenvolta
{

ComputerNode::ComputerNode(const SnapInServices& services, QString computer)
    : m_computer(std::move(computer))
    , m_extension(services)
{
}

HRESULT ComputerNode::Initialize(IConsole& console)
{
    return m_extension.Initialize(console);
}

HRESULT ComputerNode::CreateComponent(std::unique_ptr<IComponent>* component)
{
    std::unique_ptr<IComponent> extension;
    const HRESULT result = m_extension.CreateComponent(&extension);
    *component = std::make_unique<ComputerComponent>(*this, std::move(extension));
    return result;
}

HRESULT ComputerNode::Notify(const DataObjectPtr& object, const MMCNotification& notification)
{
    return m_extension.Notify(object, notification); // the extension knows the node that it extends
}

HRESULT ComputerNode::QueryDataObject(MMC_COOKIE cookie, DATA_OBJECT_TYPES type, DataObjectPtr* object)
{
    if (cookie != nullptr)
        return m_extension.QueryDataObject(cookie, type, object);
    SCOPEDATAITEM name;
    name.mask = SDI_STR;
    GetDisplayInfo(&name);
    *object = std::make_shared<ComputerDataObject>(m_computer, name.displayname);
    return S_OK;
}

HRESULT ComputerNode::GetDisplayInfo(SCOPEDATAITEM* item)
{
    if (item->lParam != nullptr)
        return m_extension.GetDisplayInfo(item);
    if (item->mask & SDI_STR)
        item->displayname =
            m_computer.isEmpty() ? LoadString(StringId::kThisComputer) : LoadString(StringId::kComputer, m_computer);
    return S_OK;
}

} // namespace quenvolta
