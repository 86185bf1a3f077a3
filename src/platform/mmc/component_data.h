#pragma once

#include "platform/hresult.h"
#include "platform/mmc/component.h"
#include "platform/mmc/data_object.h"
#include "platform/mmc/mmc_types.h"
#include "platform/mmc/notification.h"
#include "platform/mmc/scope_data_item.h"

#include <memory>

namespace quenvolta
{

class IConsole;

/// A snap-in's object for one console. No exception leaves it. Its components go before it.
class IComponentData
{
public:
    virtual ~IComponentData() = default;
    virtual HRESULT Initialize(IConsole& console) = 0;
    virtual HRESULT CreateComponent(std::unique_ptr<IComponent>* component) = 0;
    /// Notifications about the scope tree: expand, preload.
    virtual HRESULT Notify(const DataObjectPtr& object, const MMCNotification& notification) = 0;
    virtual HRESULT QueryDataObject(MMC_COOKIE cookie, DATA_OBJECT_TYPES type, DataObjectPtr* object) = 0;
    /// Fills what the mask asks of the item `lParam`.
    virtual HRESULT GetDisplayInfo(SCOPEDATAITEM* item) = 0;
};

} // namespace quenvolta
