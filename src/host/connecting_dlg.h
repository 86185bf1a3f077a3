#pragma once

#include <QDialog>

#include <memory>

namespace Ui
{
class ConnectingDlg;
}

namespace quenvolta
{

/// Says which computer is waited for, and lets the person give up.
class CConnectingDlg final : public QDialog
{
    Q_OBJECT

public:
    CConnectingDlg(QWidget* parent, const QString& computer);
    ~CConnectingDlg() override;

    /// Shows how long it has taken so far.
    void ShowSeconds(qint64 seconds);

private:
    std::unique_ptr<Ui::ConnectingDlg> m_ui;
};

} // namespace quenvolta
