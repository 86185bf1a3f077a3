#include "host/dashboard_view.h"

#include "dashboard/dashboard_renderer.h"
#include "foundation/com_exception.h"
#include "host/status_view_page.h"
#include "ui/guard.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QLabel>
#include <QPointer>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::chrono::seconds kLongestLoading(20);
constexpr std::chrono::milliseconds kBetweenQuestions(5);
constexpr int kNoticeMargin = 12;

/// Sees whether a widget has been painted.
class PaintWatch final : public QObject
{
public:
    explicit PaintWatch(QWidget& widget) { widget.installEventFilter(this); }

    bool HasPainted() const { return m_hasPainted; }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        m_hasPainted = m_hasPainted || event->type() == QEvent::Paint;
        return false;
    }

private:
    bool m_hasPainted = false;
};

QString ReasonOf(WebBrowserFault fault)
{
    return LoadString(fault == WebBrowserFault::NoSandbox ? StringId::kBrowserNoSandbox
                                                          : StringId::kBrowserNotInstalled);
}

} // namespace

DashboardView::DashboardView(IcMessages& messages, WebBrowserSource source, QWidget* parent)
    : QWidget(parent)
    , m_messages(messages)
    , m_source(std::move(source))
    , m_stack(new QStackedWidget(this))
    , m_blank(new QWidget(m_stack))
    , m_notice(new QLabel(this))
    , m_plain(new StatusViewPage(m_stack))
{
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins({});
    rows->setSpacing(0);
    rows->addWidget(m_notice);
    rows->addWidget(m_stack);
    m_notice->setObjectName(u"dashboardNotice"_s);
    m_notice->setTextFormat(Qt::PlainText);
    m_notice->setWordWrap(true);
    m_notice->setMargin(kNoticeMargin);
    m_notice->hide();
    m_blank->setBackgroundRole(QPalette::Base);
    m_blank->setAutoFillBackground(true);
    m_blank->installEventFilter(this);
    m_stack->addWidget(m_blank);
    m_stack->addWidget(m_plain);
    m_patience.setSingleShot(true);
    m_patience.setInterval(kLongestLoading);
    m_patience.callOnTimeout(this, [this] { ShowPlainPage(LoadString(StringId::kBrowserTooSlow)); });
    if (!m_source)
        ShowPlainPage({});
}

DashboardView::~DashboardView() = default;

WebBrowserSource DashboardView::DefaultSource()
{
    return qEnvironmentVariable("QUENVOLTA_DASHBOARD") == u"plain" ? WebBrowserSource() : &LoadWebBrowser;
}

void DashboardView::Open(int resource)
{
    if (!m_source)
        return;
    m_resource = resource;
    m_state = State::Loading;
    m_notice->hide();
    m_patience.stop();
    if (m_browser) {
        LoadLater();
        return;
    }
    // The window and what it can do come first: the browser is made once the window shows them.
    m_loadsWhenPainted = true;
    ShowWidget(*m_blank);
    m_blank->update();
}

void DashboardView::LoadLater()
{
    m_loadsWhenPainted = false;
    QMetaObject::invokeMethod(
        this, [this] { Guarded(m_messages, [this] { LoadPage(); }); }, Qt::QueuedConnection);
}

bool DashboardView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_blank && event->type() == QEvent::Paint && m_loadsWhenPainted)
        LoadLater();
    return QWidget::eventFilter(watched, event);
}

void DashboardView::LoadPage()
{
    if (m_state != State::Loading)
        return;
    m_patience.start();
    if (!m_browser) {
        const WebBrowserFault fault = m_source(*this, &m_browser);
        if (!m_browser) {
            m_source = nullptr; // it won't be there the next time either
            ShowPlainPage(ReasonOf(fault));
            return;
        }
        m_stack->addWidget(&m_browser->Widget());
    }
    m_browser->SetBackground(palette().color(QPalette::Base));
    ShowWidget(m_browser->Widget()); // it shows nothing yet, but paints: what is hidden would hold up its frames
    m_browser->Navigate(m_resource);
}

void DashboardView::ShowStatus(const DashboardStatus& status)
{
    m_status = status;
    m_plain->ShowStatus(status.server);
    if (m_state == State::Loaded)
        Render();
}

void DashboardView::Render()
{
    if (!m_status)
        return;
    CDashboardDocument document;
    ApplyTheme(document, palette(), font());
    RenderDashboard(document, *m_status);
    m_browser->RunScript(document.Script(), [self = QPointer(this)](const QString& answer) {
        if (self)
            Guarded(self->m_messages, [&] { self->OnRendered(answer); });
    });
}

void DashboardView::OnRendered(const QString& answer)
{
    if (m_state != State::Loaded)
        return;
    if (!CDashboardDocument::IsApplied(answer))
        throw ComException(E_FAIL, {}, u"Cannot get script object");
}

void DashboardView::OnTitleChange(const QString& title)
{
    if (m_state != State::Loading || title.compare(u"loaded"_s, Qt::CaseInsensitive) != 0)
        return;
    m_patience.stop();
    m_state = State::Loaded;
    Guarded(m_messages, [this] { Render(); });
}

void DashboardView::OnLink(const QUrl& address)
{
    // Later: what a link opens may be a dialog, and may load the page anew.
    const auto follow = [this, text = address.toString(QUrl::FullyEncoded)] {
        Guarded(m_messages, [&] {
            if (m_linkHandler)
                m_linkHandler(text);
        });
    };
    QMetaObject::invokeMethod(this, follow, Qt::QueuedConnection);
}

void DashboardView::OnEnded()
{
    // Later: the browser is in the middle of saying so.
    const auto end = [this] {
        ShowPlainPage(LoadString(StringId::kBrowserEnded));
        m_browser.reset(); // opening the page anew makes another one
    };
    QMetaObject::invokeMethod(this, end, Qt::QueuedConnection);
}

void DashboardView::ShowPlainPage(const QString& reason)
{
    m_patience.stop();
    m_state = State::Plain;
    if (!reason.isEmpty())
        m_notice->setText(LoadString(StringId::kPlainDashboard, reason));
    m_notice->setVisible(!reason.isEmpty());
    ShowWidget(*m_plain);
}

void DashboardView::ShowWidget(QWidget& widget)
{
    const bool hadFocus = isAncestorOf(QWidget::window()->focusWidget());
    m_stack->setCurrentWidget(&widget);
    setFocusProxy(&widget);
    if (hadFocus)
        widget.setFocus();
}

bool DashboardView::WaitUntilDrawn(std::chrono::milliseconds limit)
{
    QElapsedTimer timer;
    timer.start();
    QTimer wake; // so that waiting for events ends
    wake.start(kBetweenQuestions);
    const auto waitUntil = [&](auto&& isDone) {
        while (!isDone() && !timer.hasExpired(limit.count()) && m_state != State::Plain)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents,
                                            static_cast<int>(kBetweenQuestions.count()));
    };
    if (m_loadsWhenPainted)
        LoadLater(); // a window that is on no screen is never painted
    waitUntil([this] { return m_state == State::Loaded; });
    if (m_state == State::Loaded)
        Render();
    // One question at a time: a page that is busy would find more and more of them.
    struct Answer {
        bool isDrawn = false;
        bool isAwaited = false;
    };
    const auto answer = std::make_shared<Answer>();
    waitUntil([&] {
        if (!answer->isDrawn && m_state == State::Loaded && !std::exchange(answer->isAwaited, true)) {
            m_browser->RunScript(u"window.drawn"_s, [answer](const QString& text) {
                *answer = {.isDrawn = !text.isEmpty(), .isAwaited = false};
            });
        }
        return answer->isDrawn;
    });
    if (!answer->isDrawn)
        return m_state == State::Plain;
    // The engine shows its frames later than it draws them, one behind the other. The second one from here comes behind
    // all that is drawn now.
    for (int frame = 0; frame < 2; ++frame) {
        const PaintWatch watch(*m_browser->Widget().focusProxy());
        m_browser->RunScript(u"drawAnew()"_s, {});
        waitUntil([&] { return watch.HasPainted(); });
        if (!watch.HasPainted())
            return m_state == State::Plain;
    }
    return true;
}

void DashboardView::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    const bool isTheme = event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange;
    if (!isTheme || !m_browser)
        return;
    m_browser->SetBackground(palette().color(QPalette::Base));
    if (m_state == State::Loaded)
        Guarded(m_messages, [this] { Render(); });
}

} // namespace quenvolta
