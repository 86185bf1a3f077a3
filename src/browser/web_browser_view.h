#pragma once

#include "browser/browser_page.h"
#include "browser/link_gate.h"
#include "dashboard/web_browser.h"

#include <QWebEngineProfile>
#include <QWebEngineView>

namespace quenvolta
{

/// The browser on Qt's web engine. It keeps nothing on disk.
class WebBrowserView final : public IWebBrowser
{
public:
    explicit WebBrowserView(IcWebBrowserEvents& events);
    ~WebBrowserView() override;

    QWidget& Widget() override { return *m_view; }
    void SetBackground(const QColor& color) override { m_page->setBackgroundColor(color); }
    void Navigate(int resource) override;
    void RunScript(const QString& script, std::function<void(const QString& text)> done) override;

private:
    QWebEngineProfile m_profile; // goes last: the page is its
    std::unique_ptr<QWebEngineView> m_view;
    LinkGate m_gate;
    std::unique_ptr<BrowserPage> m_page;
};

} // namespace quenvolta
