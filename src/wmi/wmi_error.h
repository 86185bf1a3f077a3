#pragma once

#include "platform/hresult.h"
#include "platform/wbem/error_info.h"

namespace quenvolta
{

/// The calling thread's error information, or null; it is taken, so that no later failure is shown with it.
ErrorInfoPtr TakeErrorInformation();

/// Raises a failed management call with what the server said about it: WMIClientException for the server's extended
/// error, else ComException. A success code has no effect.
void RaiseWmiError(HRESULT code);

} // namespace quenvolta
