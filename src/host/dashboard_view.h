#pragma once

#include "dashboard/dashboard_status.h"
#include "dashboard/status_page.h"
#include "dashboard/web_browser.h"
#include "host/web_browser_loader.h"

#include <QTimer>
#include <QWidget>

#include <chrono>
#include <memory>
#include <optional>

class QLabel;
class QStackedWidget;

namespace quenvolta
{

class IcMessages;
class StatusViewPage;

/// The root's page: the dashboard in a web browser, made when it is first shown, after the window. Where there is no
/// browser, a page of plain widgets shows the same, and says why.
class DashboardView final : public QWidget, public IcStatusPage, private IcWebBrowserEvents
{
    Q_OBJECT

public:
    /// `messages` outlive this. A null source chooses the plain page.
    DashboardView(IcMessages& messages, WebBrowserSource source, QWidget* parent = nullptr);
    ~DashboardView() override;

    /// The browser of the program; none when $QUENVOLTA_DASHBOARD is "plain".
    static WebBrowserSource DefaultSource();

    /// Loads the page anew.
    void Open(int resource);
    void ShowStatus(const DashboardStatus& status) override;
    void SetLinkHandler(LinkHandler handler) override { m_linkHandler = std::move(handler); }

    /// Waits until the status is to be seen as it is now. False when the time is over first.
    bool WaitUntilDrawn(std::chrono::milliseconds limit);
    bool IsPlain() const { return m_state == State::Plain; }
    /// Null while there is none.
    IWebBrowser* Browser() { return m_browser.get(); }

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class State { Closed, Loading, Loaded, Plain };

    void OnTitleChange(const QString& title) override;
    void OnLink(const QUrl& address) override;
    void OnEnded() override;

    void LoadLater();
    void LoadPage();
    void Render();
    void OnRendered(const QString& answer);
    /// An empty reason: as it was chosen.
    void ShowPlainPage(const QString& reason);
    void ShowWidget(QWidget& widget);

    IcMessages& m_messages;
    WebBrowserSource m_source;
    LinkHandler m_linkHandler;
    std::optional<DashboardStatus> m_status;
    State m_state = State::Closed;
    int m_resource = 0;
    bool m_loadsWhenPainted = false;
    QStackedWidget* m_stack;
    QWidget* m_blank;
    QLabel* m_notice;
    StatusViewPage* m_plain;
    QTimer m_patience;
    std::unique_ptr<IWebBrowser> m_browser;
};

} // namespace quenvolta
