#pragma once

#include "platform/mmc/component_data.h"
#include "platform/mmc/context_menu.h"
#include "snapin/mmc_extension_data.h"

namespace quenvolta
{

/// A console whose root is a computer, with the extension below it.
class ComputerNode final : public IComponentData
{
public:
    /// The identity of the node in console files.
    static constexpr QUuid kClassId{0x4A6F6D7B, 0x3C0C, 0x4E5B, 0x9D, 0x0F, 0x21, 0x5B, 0x7E, 0x60, 0xC3, 0xA2};

    /// `computer` is empty for the local one.
    ComputerNode(const SnapInServices& services, QString computer);

    const QString& Computer() const { return m_computer; }

    HRESULT Initialize(IConsole& console) override;
    HRESULT CreateComponent(std::unique_ptr<IComponent>* component) override;
    HRESULT Notify(const DataObjectPtr& object, const MMCNotification& notification) override;
    HRESULT QueryDataObject(MMC_COOKIE cookie, DATA_OBJECT_TYPES type, DataObjectPtr* object) override;
    HRESULT GetDisplayInfo(SCOPEDATAITEM* item) override;

private:
    QString m_computer;
    CMMCExtensionData m_extension;
};

} // namespace quenvolta
