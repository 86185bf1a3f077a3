#pragma once

#include "browser/link_gate.h"
#include "dashboard/web_browser.h"

#include <QWebEnginePage>

namespace quenvolta
{

/// A page that stays where it is: the program's own pages load, links are told of, anything else comes to nothing.
class BrowserPage final : public QWebEnginePage
{
    Q_OBJECT

public:
    BrowserPage(QWebEngineProfile* profile, LinkGate& gate, IcWebBrowserEvents& events);

protected:
    bool acceptNavigationRequest(const QUrl& address, NavigationType type, bool isMainFrame) override;

private:
    LinkGate& m_gate;
    IcWebBrowserEvents& m_events;
};

} // namespace quenvolta
