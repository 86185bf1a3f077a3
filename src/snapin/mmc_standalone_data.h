#pragma once

#include "snapin/mmc_component_data.h"

#include <QStringList>

namespace quenvolta
{

/// The snap-in with a root of its own.
class CMMCStandaloneData final : public CMMCComponentData
{
public:
    /// `arguments`: the console's command line, which may name the computer to manage.
    CMMCStandaloneData(const SnapInServices& services, const QStringList& arguments);
};

} // namespace quenvolta
