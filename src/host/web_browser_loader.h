#pragma once

#include "dashboard/web_browser.h"

#include <functional>
#include <memory>

namespace quenvolta
{

/// Makes a browser, or leaves it out and says why.
using WebBrowserSource =
    std::function<WebBrowserFault(IcWebBrowserEvents& events, std::unique_ptr<IWebBrowser>* browser)>;

/// The browser of the module beside the program. The module, and the web engine with it, is loaded by the first call.
WebBrowserFault LoadWebBrowser(IcWebBrowserEvents& events, std::unique_ptr<IWebBrowser>* browser);

} // namespace quenvolta
