#include "foundation/wmi_client_exception.h"
#include "model/async_call.h"
#include "model/async_call_monitor.h"
#include "model_test.h"

#include <QRegularExpression>

#include <functional>

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::ExpectCode;
using test::ExpectMessage;
using test::Operation;

namespace
{

/// Asks until the call ends, and does something between the questions.
class PollingMonitor final : public IcAsyncCallMonitor
{
public:
    explicit PollingMonitor(std::function<void(IcAsyncCall&)> between)
        : m_between(std::move(between))
    {
    }
    void Run(IcAsyncCall& call) override
    {
        ++runs;
        while (!call.IsComplete())
            m_between(call);
    }

    int runs = 0;

private:
    std::function<void(IcAsyncCall&)> m_between;
};

class ActivitiesTest : public test::ModelTest
{
protected:
    ActivitiesTest()
    {
        server.holdAsyncCalls = true;
        server.data.repositories = {{.name = u"r"_s, .type = 2}};
    }

    std::shared_ptr<test::PendingCall> Pending() const { return server.PendingCalls().last(); }
    test::RecordedCall Last() const { return server.CallsOf(Operation::ExecMethod).last(); }

    PollingMonitor completing{[this](IcAsyncCall&) {
        EXPECT_TRUE(log.isEmpty()) << "announced before its end";
        Pending()->Complete();
    }};
};

TEST_F(ActivitiesTest, AreStartedWatchedAndAnnounced)
{
    const QRegularExpression identifier(u"^\\{[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\}$"_s);
    model.ImportRepository(u"a"_s, u"/old"_s, 0, completing);
    EXPECT_EQ(Last().in, (QMap<QString, Variant>{{u"Name"_s, u"a"_s}, {u"ImportPath"_s, u"/old"_s}}));
    EXPECT_EQ(Last().path, u"Quenvolta_Repository");
    const QString first = Last().activityId;
    EXPECT_TRUE(identifier.match(first).hasMatch()) << first.toStdString();
    EXPECT_EQ(log, QStringList{u"created a"_s});
    log.clear();
    model.ImportRepository(u"b"_s, u"/dump"_s, 1, completing);
    EXPECT_EQ(Last().in.value(u"ImportMode"_s), Variant{1});
    EXPECT_NE(Last().activityId, first);
    log.clear();
    model.ImportQdfsMaster(u"m"_s, u"/old"_s, true, false, true, completing);
    EXPECT_EQ(Last().in, (QMap<QString, Variant>{{u"Name"_s, u"m"_s},
                                                 {u"ImportPath"_s, u"/old"_s},
                                                 {u"ImportPermissions"_s, true},
                                                 {u"ImportDelegation"_s, false},
                                                 {u"ImportHooks"_s, true}}));
    EXPECT_EQ(log, QStringList{u"created m"_s});
    log.clear();
    model.CheckReplicationConsistency(u"r"_s, completing);
    EXPECT_EQ(Last().path, u"Quenvolta_Repository.Name=\"r\"");
    EXPECT_TRUE(identifier.match(Last().activityId).hasMatch());
    model.ExportReplicationSeed(u"r"_s, u"/seed"_s, completing);
    EXPECT_EQ(Last().in, (QMap<QString, Variant>{{u"DestinationPath"_s, u"/seed"_s}}));
    EXPECT_TRUE(log.isEmpty());
    EXPECT_EQ(completing.runs, 5);
}

TEST_F(ActivitiesTest, TellTheirFailuresInTheServersWordsAndAnnounceNothing)
{
    // A call that can't be started needs no monitor.
    server.Fail(Operation::ExecMethod, u"ImportRepository"_s, {E_ACCESSDENIED});
    ExpectCode(E_ACCESSDENIED, [this] { model.ImportRepository(u"a"_s, u"/old"_s, 0, completing); });
    EXPECT_EQ(completing.runs, 0);

    PollingMonitor failing([this](IcAsyncCall&) {
        Pending()->Fail({WBEM_E_FAILED, server.ExtendedError(u"no space"_s)});
    });
    ExpectMessage<WMIClientException>(u"no space"_s, [&] { model.ImportRepository(u"a"_s, u"/old"_s, 0, failing); });
    // The work itself finds the repository there.
    ExpectMessage<WMIClientException>(u"The repository already exists."_s, [this] {
        model.ImportQdfsMaster(u"r"_s, u"/old"_s, true, true, true, completing);
    });
    EXPECT_TRUE(log.isEmpty());
}

TEST_F(ActivitiesTest, AreCancelledByTheirIdentifier)
{
    PollingMonitor cancelling([](IcAsyncCall& call) { call.Cancel(); });
    ExpectCode(WBEM_E_CALL_CANCELLED, [&] { model.ImportRepository(u"a"_s, u"/old"_s, 0, cancelling); });
    EXPECT_EQ(Last().method, u"Cancel");
    EXPECT_EQ(Last().path, u"Quenvolta_Activity");
    EXPECT_EQ(Last().in.value(u"Id"_s), Variant{server.CallsOf(u"ImportRepository"_s).last().activityId});

    // One that ended first has succeeded, whatever was asked of it.
    PollingMonitor late([this](IcAsyncCall& call) {
        Pending()->Complete();
        call.Cancel();
    });
    model.ImportRepository(u"a"_s, u"/old"_s, 0, late);
    EXPECT_EQ(log, QStringList{u"created a"_s});
}

} // namespace

} // namespace quenvolta
