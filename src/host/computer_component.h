#pragma once

#include "platform/mmc/component.h"
#include "platform/mmc/context_menu.h"
#include "platform/mmc/controlbar.h"

#include <memory>

namespace quenvolta
{

class ComputerNode;

/// A view of a console whose root is a computer: what isn't the root's goes to the extension.
class ComputerComponent final : public IComponent, public IExtendContextMenu, public IExtendControlbar
{
public:
    ComputerComponent(ComputerNode& node, std::unique_ptr<IComponent> extension);

    HRESULT Initialize(IConsole& console) override;
    HRESULT Notify(const DataObjectPtr& object, const MMCNotification& notification) override;
    HRESULT QueryDataObject(MMC_COOKIE cookie, DATA_OBJECT_TYPES type, DataObjectPtr* object) override;
    HRESULT QueryMultiSelectObject(const QList<MMC_COOKIE>& cookies, DataObjectPtr* object) override;
    HRESULT GetResultViewType(MMC_COOKIE cookie, QString* viewType) override;
    HRESULT GetDisplayInfo(RESULTDATAITEM* item) override;
    HRESULT AddMenuItems(const DataObjectPtr& object, IContextMenuCallback& callback,
                         std::uint32_t insertionAllowed) override;
    HRESULT Command(int command, const DataObjectPtr& object) override;
    HRESULT SetControlbar(IControlbar* controlbar) override;
    HRESULT ControlbarNotify(const DataObjectPtr& object, const MMCNotification& notification) override;

private:
    ComputerNode& m_node;
    std::unique_ptr<IComponent> m_extension;
    IConsole* m_console = nullptr;
};

} // namespace quenvolta
