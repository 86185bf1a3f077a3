#pragma once

#include "dashboard/dashboard_document.h"
#include "dashboard/dashboard_status.h"

#include <QFont>
#include <QPalette>

namespace quenvolta
{

/// Writes every part of the page that can change. An unknown status of the update check is a SimpleException.
void RenderDashboard(CDashboardDocument& document, const DashboardStatus& status);

/// Gives the page the desktop's colours and font.
void ApplyTheme(CDashboardDocument& document, const QPalette& palette, const QFont& font);

} // namespace quenvolta
