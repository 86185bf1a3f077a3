#pragma once

#include <QCursor>
#include <QGuiApplication>

namespace quenvolta
{

/// Shows the arrow while it lives where a wait cursor was set: a question waits for a person.
class ArrowCursor
{
public:
    ArrowCursor()
        : m_waiting(QGuiApplication::overrideCursor() != nullptr)
    {
        if (m_waiting)
            QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    }
    ~ArrowCursor()
    {
        if (m_waiting)
            QGuiApplication::restoreOverrideCursor();
    }
    ArrowCursor(const ArrowCursor&) = delete;
    ArrowCursor& operator=(const ArrowCursor&) = delete;

private:
    bool m_waiting;
};

} // namespace quenvolta
