#include "browser/link_gate.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace quenvolta
{

namespace
{

constexpr qint64 kMillisecondsToFollow = 3000;

bool IsAct(const QEvent& event)
{
    if (event.type() == QEvent::MouseButtonRelease || event.type() == QEvent::TouchEnd)
        return true;
    if (event.type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<const QKeyEvent&>(event).key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

LinkGate::LinkGate(QWidget& widget)
    : m_widget(widget)
{
    qApp->installEventFilter(this); // the engine changes the inner widget that gets the events
}

bool LinkGate::Pass()
{
    const bool passes = m_sinceAct.isValid() && m_sinceAct.elapsed() < kMillisecondsToFollow;
    m_sinceAct.invalidate();
    return passes;
}

bool LinkGate::eventFilter(QObject* watched, QEvent* event)
{
    if (IsAct(*event)) {
        const auto* widget = qobject_cast<const QWidget*>(watched);
        if (widget == &m_widget || (widget != nullptr && m_widget.isAncestorOf(widget)))
            m_sinceAct.start();
    }
    return false;
}

} // namespace quenvolta
