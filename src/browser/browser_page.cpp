#include "browser/browser_page.h"

#include <QWebEngineSettings>

namespace quenvolta
{

using namespace Qt::StringLiterals;

BrowserPage::BrowserPage(QWebEngineProfile* profile, LinkGate& gate, IcWebBrowserEvents& events)
    : QWebEnginePage(profile)
    , m_gate(gate)
    , m_events(events)
{
    using Setting = QWebEngineSettings;
    for (const Setting::WebAttribute off :
         {Setting::ErrorPageEnabled, Setting::JavascriptCanOpenWindows, Setting::JavascriptCanAccessClipboard,
          Setting::JavascriptCanPaste, Setting::LocalStorageEnabled, Setting::LocalContentCanAccessFileUrls,
          Setting::PluginsEnabled, Setting::FullScreenSupportEnabled, Setting::ScreenCaptureEnabled,
          Setting::WebGLEnabled, Setting::PdfViewerEnabled, Setting::NavigateOnDropEnabled})
        settings()->setAttribute(off, false);
    settings()->setAttribute(Setting::FocusOnNavigationEnabled, false);
    connect(this, &QWebEnginePage::titleChanged, this, [this](const QString& title) { m_events.OnTitleChange(title); });
    connect(this, &QWebEnginePage::renderProcessTerminated, this, [this] { m_events.OnEnded(); });
}

bool BrowserPage::acceptNavigationRequest(const QUrl& address, NavigationType type, bool isMainFrame)
{
    if (address.scheme() == "res"_L1)
        return isMainFrame && type == NavigationTypeTyped; // asked for by the program
    if (isMainFrame && type == NavigationTypeLinkClicked && m_gate.Pass())
        m_events.OnLink(address);
    return false;
}

} // namespace quenvolta
