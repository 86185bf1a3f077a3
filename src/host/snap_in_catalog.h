#pragma once

#include "host/console_file.h"
#include "platform/mmc/component_data.h"
#include "snapin/mmc_component_data.h"

#include <QStringList>

#include <memory>
#include <optional>

namespace quenvolta
{

/// The snap-ins that a console can hold.
class SnapInCatalog
{
public:
    /// `arguments`: the console's command line. `extended`: the computer below whose node the extension hangs in a new
    /// console; empty for the local one, nothing for the snap-in with a root of its own.
    SnapInCatalog(const SnapInServices& services, QStringList arguments, std::optional<QString> extended = {});

    /// The snap-in of a new console.
    std::unique_ptr<IComponentData> CreateNew() const;
    /// The snap-in of a console file. A file with a snap-in that isn't there is a SimpleException.
    std::unique_ptr<IComponentData> Create(const ConsoleFile& file) const;
    /// What a console file is to hold of a snap-in of this catalog.
    static ConsoleFile Describe(IComponentData& snapIn, bool clearDirty);
    /// True when a saved console would differ from the file.
    static bool IsDirty(IComponentData& snapIn);

    const SnapInServices& Services() const { return m_services; }

private:
    SnapInServices m_services;
    QStringList m_arguments;
    std::optional<QString> m_extended;
};

} // namespace quenvolta
