#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>
#include <QWidget>

namespace quenvolta
{

class CConnectingDlg;

/// Watches over connections that are being made: shows the dialog once one takes a while.
class ConnectionWatch
{
public:
    ConnectionWatch();
    ~ConnectionWatch();
    ConnectionWatch(const ConnectionWatch&) = delete;
    ConnectionWatch& operator=(const ConnectionWatch&) = delete;

    /// The window over which the dialog opens; it may go earlier than this.
    void SetParent(QWidget* parent) { m_parent = parent; }

    /// To be called again and again while the computer is waited for. False when the person gave up.
    bool IsStillWanted(const QString& computer);

private:
    void CloseDialog();

    QPointer<QWidget> m_parent;
    QPointer<CConnectingDlg> m_dialog;
    QTimer m_end;
    QElapsedTimer m_sinceBegin;
    QElapsedTimer m_sinceLast;
    bool m_isAsking = false;
};

} // namespace quenvolta
