#include "async/async_call_monitor_dlg.h"

#include "model/async_call.h"
#include "ui/arrow_cursor.h"
#include "ui_async_call_monitor_dlg.h"

#include <QShowEvent>

#include <chrono>
#include <utility>

namespace quenvolta
{

using namespace std::chrono_literals;

namespace
{

constexpr auto kPollPeriod = 500ms;

} // namespace

CAsyncCallMonitorDlg::CAsyncCallMonitorDlg(QWidget* parent, ProgressTexts texts)
    : QDialog(parent)
    , m_texts(std::move(texts))
    , m_ui(std::make_unique<Ui::AsyncCallMonitorDlg>())
{
    m_ui->setupUi(this);
    setWindowTitle(m_texts.title);
    m_ui->cancel->setEnabled(m_texts.cancellable);
    m_timer.setInterval(kPollPeriod);
    connect(&m_timer, &QTimer::timeout, this, &CAsyncCallMonitorDlg::Poll);
    connect(m_ui->cancel, &QPushButton::clicked, this, &CAsyncCallMonitorDlg::Cancel);
}

CAsyncCallMonitorDlg::~CAsyncCallMonitorDlg() = default;

void CAsyncCallMonitorDlg::Run(IcAsyncCall& call)
{
    const ArrowCursor cursor;
    m_call = &call;
    m_failure = nullptr;
    m_ui->text->setText(m_texts.text);
    m_ui->detail->setText(m_texts.detail);
    exec();
    m_call = nullptr;
    if (m_failure)
        std::rethrow_exception(std::exchange(m_failure, nullptr));
}

void CAsyncCallMonitorDlg::reject()
{
    if (m_call == nullptr)
        QDialog::reject();
    else if (m_texts.cancellable)
        Cancel();
}

void CAsyncCallMonitorDlg::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (!event->spontaneous())
        m_timer.start();
}

void CAsyncCallMonitorDlg::Poll()
{
    if (m_call == nullptr)
        return;
    try {
        if (m_call->IsComplete())
            Finish();
    } catch (...) { // no exception may cross the event loop; Run throws it again
        m_failure = std::current_exception();
        Finish();
    }
}

void CAsyncCallMonitorDlg::Cancel()
{
    m_ui->text->setText(m_texts.cancellingText);
    m_ui->detail->setText(m_texts.cancellingDetail);
    try {
        m_call->Cancel();
    } catch (...) { // perhaps the call has just ended: polling tells
        return;
    }
}

void CAsyncCallMonitorDlg::Finish()
{
    m_timer.stop();
    m_call = nullptr;
    accept();
}

} // namespace quenvolta
