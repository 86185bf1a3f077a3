#pragma once

#include "provider/data_folder.h"
#include "provider/management_namespace.h"
#include "provider/served_version.h"

#include <memory>

namespace quenvolta
{

/// The namespace root\Quenvolta of the server in `data`; `data` must outlive it.
std::unique_ptr<ManagementNamespace> MakeServerNamespace(DataFolder& data, const ServedVersion& version);

/// The computer's standard namespace root\CIMV2: network addresses, system users and groups.
std::unique_ptr<ManagementNamespace> MakeStandardNamespace(const ServedVersion& version);

/// Finishes or removes what ended providers left half made: accounts, certificates and repositories. A folder that
/// can't be read or written is no failure here: whatever needs it will say so.
void CleanLeftovers(DataFolder& data);

} // namespace quenvolta
