#pragma once

#include "dashboard/command_link.h"
#include "dashboard/status_snapshot.h"
#include "model/update_info.h"

#include <QSet>

namespace quenvolta
{

/// All that the root's page shows.
struct DashboardStatus {
    CStatusSnapshot server;
    UpdateInfo update;
    bool updateCheckDisabled = false;
    /// False below another snap-in's node, which chooses the computer.
    bool isStandalone = true;
    /// The links that lead somewhere; the others are not shown.
    QSet<CommandLink> links;
};

} // namespace quenvolta
