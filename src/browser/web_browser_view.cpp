#include "browser/web_browser_view.h"

#include "browser/page_requests.h"

#include <utility>

namespace quenvolta
{

WebBrowserView::WebBrowserView(IcWebBrowserEvents& events)
    : m_view(std::make_unique<QWebEngineView>())
    , m_gate(*m_view)
    , m_page(std::make_unique<BrowserPage>(&m_profile, m_gate, events))
{
    m_profile.installUrlSchemeHandler("res", new ResourceHandler(&m_profile));
    m_profile.setUrlRequestInterceptor(new ResourcesOnly(&m_profile));
    m_view->setPage(m_page.get());
    m_view->setContextMenuPolicy(Qt::NoContextMenu);
    m_view->setAcceptDrops(false);
}

WebBrowserView::~WebBrowserView()
{
    m_page.reset();
}

void WebBrowserView::Navigate(int resource)
{
    m_page->load(QUrl(QStringLiteral("res://dashboard/%1").arg(resource)));
}

void WebBrowserView::RunScript(const QString& script, std::function<void(const QString& text)> done)
{
    m_page->runJavaScript(script, [done = std::move(done)](const QVariant& result) {
        if (done)
            done(result.toString());
    });
}

} // namespace quenvolta
