#include "async/activity_kind.h"
#include "async/async_call_monitor_dlg.h"
#include "foundation/com_exception.h"
#include "foundation/wmi_client_exception.h"
#include "model/async_call.h"
#include "support/dialog_test.h"
#include "support/expect_failure.h"
#include "ui/wait_cursor.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>

#include <functional>

namespace quenvolta::test
{

namespace
{

ProgressTexts Texts(bool cancellable = true)
{
    return {u"Quenvolta Server Manager"_s, u"Creating..."_s, u"Minutes."_s, cancellable, u"Cancelling..."_s, {}};
}

/// A call that answers as the test says.
class FakeCall final : public IcAsyncCall
{
public:
    bool IsComplete() override
    {
        ++polls;
        return isComplete();
    }
    void Cancel() override
    {
        ++cancels;
        if (failCancel)
            throw ComException(E_FAIL);
    }

    std::function<bool()> isComplete = [] { return true; };
    int polls = 0;
    int cancels = 0;
    bool failCancel = false;
};

class AsyncCallMonitorTest : public DialogTest
{
protected:
    static QString Label(QWidget& dialog, const char* name) { return Part<QLabel>(dialog, name).text(); }

    FakeCall call;
    CAsyncCallMonitorDlg monitor{nullptr, Texts()};
};

} // namespace

TEST(ActivityKindTest, WhatCanBeCancelledSaysSoWhenItIs)
{
    const ProgressTexts dump = ProgressTextsOf(ActivityKind::ImportDump);
    EXPECT_EQ(dump.title, u"Quenvolta Server Manager");
    EXPECT_EQ(dump.text, u"Importing repository from a dump file...");
    EXPECT_EQ(dump.cancellingText, u"Cancelling repository import...");
    EXPECT_EQ(ProgressTextsOf(ActivityKind::ImportUntold).text, u"");
    EXPECT_EQ(ProgressTextsOf(ActivityKind::ExportSeed).cancellingText, u"Cancelling export of replication seed...");
    const ProgressTexts check = ProgressTextsOf(ActivityKind::CheckConsistency);
    EXPECT_EQ(check.text, u"Checking replication consistency...");
    EXPECT_FALSE(check.cancellable);
    EXPECT_EQ(check.cancellingText, u"");
}

TEST_F(AsyncCallMonitorTest, ACallThatHasEndedIsNoticedAtTheFirstPollAfterHalfASecond)
{
    QElapsedTimer running;
    running.start();
    const ModalDriver driver([&](QWidget& modal) {
        EXPECT_EQ(modal.windowTitle(), u"Quenvolta Server Manager");
        EXPECT_EQ(Label(modal, "text"), u"Creating...");
        EXPECT_EQ(Label(modal, "detail"), u"Minutes.");
        EXPECT_EQ(Part<QProgressBar>(modal, "progress").maximum(), 0); // moves without an end
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::ArrowCursor);
        EXPECT_EQ(call.polls, 0);
    });
    const WaitCursor cursor;
    monitor.Run(call);
    EXPECT_TRUE(driver.seen);
    EXPECT_EQ(call.polls, 1);
    EXPECT_GE(running.elapsed(), 450);
    EXPECT_FALSE(monitor.isVisible());
}

TEST_F(AsyncCallMonitorTest, EveryFailureKeepsItsKindAndTheDialogServesAgain)
{
    const WMIClientException failure(WBEM_E_FAILED, {}, {u"The disk is full."_s, u"Summary"_s, u"Details"_s, 3});
    call.isComplete = [&]() -> bool { throw failure; };
    const auto caught = FailureOf<WMIClientException>([&] { monitor.Run(call); });
    ASSERT_TRUE(caught);
    EXPECT_EQ(caught->GetMessage(), failure.GetMessage());
    EXPECT_EQ(caught->ProbableReason(), 3);

    call.isComplete = []() -> bool { throw std::bad_alloc(); };
    EXPECT_THROW(monitor.Run(call), std::bad_alloc);
    call.isComplete = [] { return true; };
    monitor.Run(call);
    EXPECT_EQ(call.polls, 3);
}

TEST_F(AsyncCallMonitorTest, CancelAsksEachTimeAndOnlyTheCallsEndClosesTheDialog)
{
    call.failCancel = true; // which nobody hears of
    call.isComplete = [&]() -> bool {
        if (call.polls < 2)
            return false;
        throw ComException(WBEM_E_CALL_CANCELLED);
    };
    const ModalDriver driver([&](QWidget& modal) {
        auto& button = Part<QPushButton>(modal, "cancel");
        Click(button);
        EXPECT_EQ(Label(modal, "text"), u"Cancelling...");
        EXPECT_EQ(Label(modal, "detail"), u"");
        EXPECT_TRUE(button.isEnabled());
        Click(button);
        QTest::keyClick(&modal, Qt::Key_Escape);
        modal.close();
        EXPECT_TRUE(modal.isVisible());
    });
    ExpectCode(WBEM_E_CALL_CANCELLED, [&] { monitor.Run(call); });
    EXPECT_EQ(call.cancels, 4);
    EXPECT_EQ(call.polls, 2);

    // The server was quicker than the request.
    call.isComplete = [] { return true; };
    const ModalDriver again([](QWidget& modal) {
        EXPECT_EQ(Label(modal, "text"), u"Creating...");
        Click(modal, "cancel");
    });
    monitor.Run(call);
    EXPECT_EQ(call.cancels, 5);
}

TEST_F(AsyncCallMonitorTest, WhatCannotBeCancelledStaysUntilItsEnd)
{
    CAsyncCallMonitorDlg fixed(nullptr, Texts(false));
    const ModalDriver driver([&](QWidget& modal) {
        EXPECT_FALSE(Part<QPushButton>(modal, "cancel").isEnabled());
        QTest::keyClick(&modal, Qt::Key_Escape);
        modal.close();
        EXPECT_TRUE(modal.isVisible());
        EXPECT_EQ(Label(modal, "text"), u"Creating...");
    });
    fixed.Run(call);
    EXPECT_TRUE(driver.seen);
    EXPECT_EQ(call.cancels, 0);
}

TEST_F(AsyncCallMonitorTest, TheServersActivityIsCancelledByItsIdentifierAndItsFailureArrives)
{
    server.holdAsyncCalls = true;
    server.Handle(u"Quenvolta_Activity"_s, u"Cancel"_s, [this](MethodContext& context) {
        EXPECT_EQ(context.Text(u"Id"_s), server.PendingCalls().first()->ActivityId());
        server.PendingCalls().first()->Fail({WBEM_E_CALL_CANCELLED, server.ExtendedError(u"It was cancelled."_s)});
        return S_OK;
    });
    const ModalDriver driver([](QWidget& modal) { Click(modal, "cancel"); });
    ExpectMessage<WMIClientException>(u"It was cancelled."_s,
                                      [&] { model.ImportRepository(u"r"_s, u"/srv/dump"_s, 1, monitor); });
    EXPECT_TRUE(driver.seen);

    // What can't even be started never shows the dialog.
    server.Fail(Operation::ExecMethod, u"ImportRepository"_s, {E_ACCESSDENIED});
    const ModalDriver unused([](QWidget& modal) { modal.close(); });
    ExpectCode(E_ACCESSDENIED, [&] { model.ImportRepository(u"r"_s, u"/srv/dump"_s, 1, monitor); });
    EXPECT_FALSE(unused.seen);
}

} // namespace quenvolta::test
