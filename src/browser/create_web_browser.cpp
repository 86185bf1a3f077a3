#include "browser/browser_environment.h"
#include "browser/web_browser_view.h"

using namespace quenvolta;

extern "C" Q_DECL_EXPORT WebBrowserFault CreateWebBrowser(IcWebBrowserEvents& events,
                                                          std::unique_ptr<IWebBrowser>* browser)
{
    const WebBrowserFault fault = PrepareWebEngine();
    if (fault == WebBrowserFault::None)
        *browser = std::make_unique<WebBrowserView>(events);
    return fault;
}
