#pragma once

#include "async/progress_texts.h"
#include "model/async_call_monitor.h"

#include <QDialog>
#include <QTimer>

#include <exception>
#include <memory>

namespace Ui
{
class AsyncCallMonitorDlg;
}

namespace quenvolta
{

/// Shows that a long call is under way until it ends, and lets it be cancelled. Nothing else closes the dialog.
class CAsyncCallMonitorDlg final : public QDialog, public IcAsyncCallMonitor
{
    Q_OBJECT

public:
    CAsyncCallMonitorDlg(QWidget* parent, ProgressTexts texts);
    ~CAsyncCallMonitorDlg() override;

    void Run(IcAsyncCall& call) override;

    /// Escape, and the window's own button, ask for the call's end as the Cancel button does.
    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void Poll();
    void Cancel();
    void Finish();

    ProgressTexts m_texts;
    std::unique_ptr<Ui::AsyncCallMonitorDlg> m_ui;
    QTimer m_timer;
    IcAsyncCall* m_call = nullptr; // while it runs
    std::exception_ptr m_failure;
};

} // namespace quenvolta
