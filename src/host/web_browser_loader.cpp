#include "host/web_browser_loader.h"

#include <QApplication>
#include <QLibrary>
#include <QOpenGLContext>

// What the web engine's own initialisation calls; no header declares it for programs.
Q_GUI_EXPORT QOpenGLContext* qt_gl_global_share_context();
Q_GUI_EXPORT void qt_gl_set_global_share_context(QOpenGLContext* context);

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

/// The engine asks for a graphics context that is shared from the program's start on. Making one costs each start
/// 60 ms, and the page is painted without; one that was never created is all that the engine looks at then.
void ProvideShareContext()
{
    if (qt_gl_global_share_context() == nullptr)
        qt_gl_set_global_share_context(new QOpenGLContext(qApp));
}

WebBrowserFactory ResolveFactory()
{
    ProvideShareContext();
    QLibrary module(QApplication::applicationDirPath() + "/quenvolta-browser.so"_L1);
    return reinterpret_cast<WebBrowserFactory>(module.resolve("CreateWebBrowser"));
}

} // namespace

WebBrowserFault LoadWebBrowser(IcWebBrowserEvents& events, std::unique_ptr<IWebBrowser>* browser)
{
    static const WebBrowserFactory factory = ResolveFactory();
    return factory != nullptr ? factory(events, browser) : WebBrowserFault::NotInstalled;
}

} // namespace quenvolta
