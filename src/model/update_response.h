#pragma once

#include "model/update_info.h"
#include "platform/hresult.h"

#include <QString>

namespace quenvolta
{

/// What the answer of the update service in the file says. An unreadable or contradictory one is a failed check.
UpdateInfo ReadUpdateResponse(const QString& path);

/// A check whose download failed with the code.
UpdateInfo FailedUpdateCheck(HRESULT code);

} // namespace quenvolta
