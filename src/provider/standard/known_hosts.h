#pragma once

#include "provider/standard/directory_entry.h"

#include <QList>

namespace quenvolta
{

/// The computers that the system's hosts database names, and this one. The network is not asked.
QList<DirectoryEntry> ReadKnownHosts();

} // namespace quenvolta
