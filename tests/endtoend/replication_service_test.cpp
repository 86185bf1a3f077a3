#include "foundation/com_exception.h"
#include "real_model.h"

#include <QScopeGuard>

#include <csignal>
#include <gtest/gtest.h>

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::uint32_t kStopped = 1;
constexpr std::uint32_t kRunning = 4;
constexpr std::uint32_t kProcessAborted = 1067;

template <typename Body>
std::uint32_t CodeOf(Body&& body)
{
    try {
        body();
    } catch (const ComException& failure) {
        return static_cast<std::uint32_t>(failure.Code());
    }
    return 0;
}

} // namespace

TEST(ReplicationService, StartsStopsAndTellsTheTruthWhateverHappensToItAndToTheProvider)
{
    const RealServer server;
    RealModel real(LocalOptions(server));
    CModel& model = real.model;
    const auto stop = qScopeGuard([&] {
        if (model.GetQdfsServiceState().state != kStopped)
            model.StopQdfsService();
    });
    const auto start = [&] { model.StartQdfsService(); };
    const auto end = [&] { model.StopQdfsService(); };
    EXPECT_EQ(model.GetQdfsServiceState().state, kStopped);
    EXPECT_EQ(CodeOf(start), 0x80070422U); // disabled
    EXPECT_EQ(CodeOf(end), 0x80070426U);

    model.EnableQdfsService();
    start();
    EXPECT_EQ(model.GetQdfsServiceState().state, kRunning);
    EXPECT_EQ(CodeOf(start), 0x80070420U);
    KillProviders(server);
    EXPECT_EQ(model.GetQdfsServiceState().state, kRunning);
    RealModel other(LocalOptions(server));
    EXPECT_EQ(other.model.GetQdfsServiceState().state, kRunning);
    other.model.StopQdfsService();
    EXPECT_EQ(model.GetQdfsServiceState().state, kStopped);
    EXPECT_EQ(model.GetQdfsServiceExitState().exitCode, 0U);

    start();
    const QList<pid_t> services = ReplicationServicesOf(server);
    ASSERT_EQ(services.size(), 1);
    ::kill(services.first(), SIGKILL);
    while (model.GetQdfsServiceState().state == kRunning) {
    }
    EXPECT_EQ(model.GetQdfsServiceExitState().exitCode, kProcessAborted);
    start();
    EXPECT_EQ(model.GetQdfsServiceExitState().exitCode, 0U);
    end();
    EXPECT_TRUE(ReplicationServicesOf(server).isEmpty());
}

} // namespace quenvolta::test
