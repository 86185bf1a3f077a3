#pragma once

#include "snapin/mmc_component_data.h"

namespace quenvolta
{

/// The snap-in below a node of another one.
class CMMCExtensionData final : public CMMCComponentData
{
public:
    explicit CMMCExtensionData(const SnapInServices& services);

    /// Also knows the nodes that it extends, by their node type.
    std::shared_ptr<CSnapInItem> FindItem(const DataObjectPtr& object) override;
};

} // namespace quenvolta
