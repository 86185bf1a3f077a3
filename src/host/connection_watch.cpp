#include "host/connection_watch.h"

#include "host/connecting_dlg.h"

#include <QCoreApplication>
#include <QGuiApplication>

namespace quenvolta
{

namespace
{

// Most connections are there before a dialog could be read.
constexpr qint64 kShowAfterMs = 700;
// The questions of one connection come far more often.
constexpr qint64 kGapMs = 1000;
constexpr int kEventsMs = 20;

} // namespace

ConnectionWatch::ConnectionWatch()
{
    // The end of a connection isn't told: it is when nobody asks any more.
    m_end.setSingleShot(true);
    m_end.setInterval(0);
    QObject::connect(&m_end, &QTimer::timeout, &m_end, [this] {
        if (!m_isAsking)
            CloseDialog();
    });
}

ConnectionWatch::~ConnectionWatch()
{
    CloseDialog();
}

void ConnectionWatch::CloseDialog()
{
    delete m_dialog; // its window may be gone, and it with it
}

bool ConnectionWatch::IsStillWanted(const QString& computer)
{
    if (m_isAsking)
        return true; // a connection from within the events below: it goes on without a dialog of its own
    if (!m_sinceLast.isValid() || m_sinceLast.elapsed() > kGapMs) {
        m_sinceBegin.start();
        CloseDialog();
    }
    m_sinceLast.start();
    if (m_sinceBegin.elapsed() < kShowAfterMs)
        return true;
    m_isAsking = true;
    if (!m_dialog) {
        m_dialog = new CConnectingDlg(m_parent, computer);
        m_dialog->setModal(true);
        m_dialog->show();
    }
    m_dialog->ShowSeconds(m_sinceBegin.elapsed() / 1000);
    // The pointer over the dialog is to be one that presses buttons.
    QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    QCoreApplication::processEvents(QEventLoop::AllEvents, kEventsMs);
    QGuiApplication::restoreOverrideCursor();
    m_isAsking = false;
    const bool isWanted = m_dialog && m_dialog->isVisible();
    if (!isWanted)
        CloseDialog();
    m_sinceLast.start();
    m_end.start();
    return isWanted;
}

} // namespace quenvolta
