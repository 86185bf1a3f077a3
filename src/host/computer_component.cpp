#include "host/computer_component.h"

#include "host/computer_data_object.h"
#include "host/computer_node.h"
#include "platform/mmc/console.h"
#include "platform/mmc/header_ctrl.h"
#include "ui/string_table.h"

#include <array>

namespace quenvolta
{

namespace
{

constexpr int kColumnWidth = 200;

bool IsOwn(const DataObjectPtr& object)
{
    return dynamic_cast<const ComputerDataObject*>(object.get()) != nullptr;
}

/// The extension's answer through an interface that it may not have.
template <typename Interface, typename Ask>
HRESULT AskThrough(IComponent& component, Ask&& ask)
{
    auto* found = dynamic_cast<Interface*>(&component);
    return found != nullptr ? ask(*found) : E_NOTIMPL;
}

} // namespace

ComputerComponent::ComputerComponent(ComputerNode& node, std::unique_ptr<IComponent> extension)
    : m_node(node)
    , m_extension(std::move(extension))
{
}

HRESULT ComputerComponent::Initialize(IConsole& console)
{
    m_console = &console;
    return m_extension->Initialize(console);
}

HRESULT ComputerComponent::Notify(const DataObjectPtr& object, const MMCNotification& notification)
{
    const bool isHelp = notification.type == MMC_NOTIFY_TYPE::MMCN_CONTEXTHELP;
    if (!IsOwn(object) || isHelp)
        return m_extension->Notify(isHelp ? nullptr : object, notification);
    if (notification.type == MMC_NOTIFY_TYPE::MMCN_SHOW && notification.on) {
        const std::array titles{StringId::kColumnName, StringId::kColumnType, StringId::kColumnDescription};
        for (std::size_t column = 0; column < titles.size(); ++column)
            m_console->Header().InsertColumn(static_cast<int>(column), LoadString(titles[column]), kColumnWidth);
    }
    return S_OK;
}

HRESULT ComputerComponent::QueryDataObject(MMC_COOKIE cookie, DATA_OBJECT_TYPES type, DataObjectPtr* object)
{
    return m_node.QueryDataObject(cookie, type, object);
}

HRESULT ComputerComponent::QueryMultiSelectObject(const QList<MMC_COOKIE>& cookies, DataObjectPtr* object)
{
    return m_extension->QueryMultiSelectObject(cookies, object);
}

HRESULT ComputerComponent::GetResultViewType(MMC_COOKIE cookie, QString* viewType)
{
    return cookie != nullptr ? m_extension->GetResultViewType(cookie, viewType) : S_FALSE;
}

HRESULT ComputerComponent::GetDisplayInfo(RESULTDATAITEM* item)
{
    return m_extension->GetDisplayInfo(item);
}

HRESULT ComputerComponent::AddMenuItems(const DataObjectPtr& object, IContextMenuCallback& callback,
                                        std::uint32_t insertionAllowed)
{
    if (IsOwn(object))
        return S_OK;
    return AskThrough<IExtendContextMenu>(*m_extension, [&](IExtendContextMenu& extension) {
        return extension.AddMenuItems(object, callback, insertionAllowed);
    });
}

HRESULT ComputerComponent::Command(int command, const DataObjectPtr& object)
{
    return AskThrough<IExtendContextMenu>(
        *m_extension, [&](IExtendContextMenu& extension) { return extension.Command(command, object); });
}

HRESULT ComputerComponent::SetControlbar(IControlbar* controlbar)
{
    return AskThrough<IExtendControlbar>(
        *m_extension, [&](IExtendControlbar& extension) { return extension.SetControlbar(controlbar); });
}

HRESULT ComputerComponent::ControlbarNotify(const DataObjectPtr& object, const MMCNotification& notification)
{
    return AskThrough<IExtendControlbar>(
        *m_extension, [&](IExtendControlbar& extension) { return extension.ControlbarNotify(object, notification); });
}

} // namespace quenvolta
