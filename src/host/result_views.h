#pragma once

#include "platform/mmc/result_view.h"

#include <QObject>
#include <QString>

#include <chrono>

class QStackedWidget;

namespace quenvolta
{

class DashboardView;
class IcMessages;
class MessageViewPage;

/// What the result pane can show, one at a time: the list, the message view and the dashboard.
class ResultViews final : public QObject
{
    Q_OBJECT

public:
    /// The stack has `list` already, and gets the others. `messages` outlive this.
    ResultViews(QStackedWidget& stack, QWidget& list, IcMessages& messages, QObject* parent);

    /// The view of a type, made ready for what the snap-in tells it; null for the list (the empty type).
    IResultView* ViewOf(const QString& viewType);
    /// Shows the view of a type. It has the focus if the one before had it.
    void Show(const QString& viewType);
    bool ShowsList() const;
    QWidget& Current() const;

    /// Waits until the shown view is to be seen as it is now. False when the time is over first.
    bool WaitUntilDrawn(std::chrono::milliseconds limit);

private:
    QStackedWidget& m_stack;
    QWidget& m_list;
    MessageViewPage* m_messagePage;
    DashboardView* m_dashboard;
};

} // namespace quenvolta
