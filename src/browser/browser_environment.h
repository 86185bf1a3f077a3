#pragma once

#include "dashboard/web_browser.h"

namespace quenvolta
{

/// Prepares the process for the web engine, once. Where the engine would end the whole program, this says so before it
/// is tried.
WebBrowserFault PrepareWebEngine();

} // namespace quenvolta
