#include "host/result_views.h"

#include "host/dashboard_view.h"
#include "host/message_view_page.h"
#include "platform/mmc/result_view_type.h"

#include <QStackedWidget>

namespace quenvolta
{

ResultViews::ResultViews(QStackedWidget& stack, QWidget& list, IcMessages& messages, QObject* parent)
    : QObject(parent)
    , m_stack(stack)
    , m_list(list)
    , m_messagePage(new MessageViewPage(&stack))
    , m_dashboard(new DashboardView(messages, DashboardView::DefaultSource(), &stack))
{
    m_stack.addWidget(m_messagePage);
    m_stack.addWidget(m_dashboard);
}

IResultView* ResultViews::ViewOf(const QString& viewType)
{
    if (viewType.isEmpty())
        return nullptr;
    if (viewType != CLSID_MessageView) {
        m_dashboard->Open(viewType.section(u'/', -1).toInt());
        return m_dashboard;
    }
    m_messagePage->Clear();
    return m_messagePage;
}

void ResultViews::Show(const QString& viewType)
{
    const bool hadFocus = m_stack.isAncestorOf(m_stack.window()->focusWidget());
    QWidget* view = m_dashboard;
    if (viewType.isEmpty())
        view = &m_list;
    else if (viewType == CLSID_MessageView)
        view = m_messagePage;
    m_stack.setCurrentWidget(view);
    if (hadFocus)
        view->setFocus();
}

bool ResultViews::ShowsList() const
{
    return m_stack.currentWidget() == &m_list;
}

QWidget& ResultViews::Current() const
{
    return *m_stack.currentWidget();
}

bool ResultViews::WaitUntilDrawn(std::chrono::milliseconds limit)
{
    return m_stack.currentWidget() != m_dashboard || m_dashboard->WaitUntilDrawn(limit);
}

} // namespace quenvolta
