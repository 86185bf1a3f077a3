#pragma once

#include <QWidget>

namespace quenvolta
{

class WMIClientException;

/// Shows the failure with what to do about its probable reason. False when there is no guidance for the reason, and
/// nothing was shown.
bool ShowGuidance(QWidget* parent, const WMIClientException& exception);

} // namespace quenvolta
