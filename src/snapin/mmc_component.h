#pragma once

#include "platform/mmc/component.h"

namespace quenvolta
{

class CMMCComponentData;

/// The snap-in in one view.
class CMMCComponent final : public IComponent
{
public:
    explicit CMMCComponent(CMMCComponentData& data)
        : m_data(data)
    {
    }

    HRESULT Initialize(IConsole& console) override;
    HRESULT Notify(const DataObjectPtr& object, const MMCNotification& notification) override;
    HRESULT QueryDataObject(MMC_COOKIE cookie, DATA_OBJECT_TYPES type, DataObjectPtr* object) override;
    HRESULT GetResultViewType(MMC_COOKIE cookie, QString* viewType) override;
    HRESULT GetDisplayInfo(RESULTDATAITEM* item) override;

private:
    CMMCComponentData& m_data;
    IConsole* m_console = nullptr;
};

} // namespace quenvolta
