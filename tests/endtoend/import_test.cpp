#include "foundation/com_exception.h"
#include "foundation/wmi_client_exception.h"
#include "model/async_call.h"
#include "model/async_call_monitor.h"
#include "real_model.h"
#include "support/dump_file.h"
#include "support/expect_failure.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <functional>
#include <gtest/gtest.h>
#include <poll.h>
#include <utility>

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::int32_t kRepositoryMode = 0;
constexpr std::int32_t kDumpMode = 1;
constexpr int kLongestWaitMs = 60'000;

/// Asks until the import ends, and does something once in the middle of it.
class ImportMonitor final : public IcAsyncCallMonitor
{
public:
    ImportMonitor(const RealServer& server, std::function<void(IcAsyncCall&)> inTheMiddle)
        : m_server(server)
        , m_inTheMiddle(std::move(inTheMiddle))
    {
    }

    void Run(IcAsyncCall& call) override
    {
        QElapsedTimer waiting;
        waiting.start();
        while (!call.IsComplete()) {
            if (m_inTheMiddle && m_server.IsImporting())
                std::exchange(m_inTheMiddle, nullptr)(call);
            ASSERT_LT(waiting.elapsed(), kLongestWaitMs);
            ::poll(nullptr, 0, 1);
        }
    }

    bool WasInTheMiddle() const { return !m_inTheMiddle; }

private:
    const RealServer& m_server;
    std::function<void(IcAsyncCall&)> m_inTheMiddle;
};

class ImportTest : public ::testing::Test, public IcModelEvents
{
protected:
    ImportTest() { real.model.Subscribe(*this); }

    void OnRepositoryCreated(const QString& name) override { created.append(name); }

    QString Dump(int revisions) const
    {
        QFile file(server.Scratch(u"dump"_s));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(DumpOf(revisions));
        return file.fileName();
    }

    RealServer server;
    RealModel real{LocalOptions(server)};
    QStringList created;
};

TEST_F(ImportTest, RepositoriesAndDumpsArriveAndAreAnnounced)
{
    server.MakeWithSvnadmin(u"Stock"_s);
    server.Import(u"Stock"_s, {u"trunk/file"_s});
    const QString source = server.Scratch(u"elsewhere"_s);
    ASSERT_TRUE(QDir().rename(server.RepositoriesFolder() + "/Stock"_L1, source));
    EXPECT_EQ(real.model.GetImportSourceType(source), 0U);
    ImportMonitor monitor(server, nullptr);
    real.model.ImportRepository(u"Copied"_s, source, kRepositoryMode, monitor);
    real.model.ImportRepository(u"Loaded"_s, Dump(3), kDumpMode, monitor);
    EXPECT_EQ(created, (QStringList{u"Copied"_s, u"Loaded"_s}));
    EXPECT_EQ(server.Svn({u"ls"_s, server.FileUrl(u"Copied"_s) + "/trunk"_L1}), u"file\n"_s);
    EXPECT_EQ(server.Svn({u"cat"_s, server.FileUrl(u"Loaded"_s) + "/file"_L1}), u"revision 3\n"_s);

    const auto refused = FailureOf<WMIClientException>(
        [&] { real.model.ImportRepository(u"New"_s, server.Scratch(u"missing"_s), kRepositoryMode, monitor); });
    ASSERT_TRUE(refused);
    EXPECT_TRUE(refused->GetMessage().contains(u"/missing"_s)) << refused->GetMessage().toStdString();
    EXPECT_EQ(created.size(), 2);
}

TEST_F(ImportTest, ACancelledOneLeavesNothingBehind)
{
    ImportMonitor cancelling(server, [](IcAsyncCall& call) { call.Cancel(); });
    ExpectCode(WBEM_E_CALL_CANCELLED,
               [&] { real.model.ImportRepository(u"New"_s, Dump(20'000), kDumpMode, cancelling); });
    EXPECT_TRUE(cancelling.WasInTheMiddle());
    EXPECT_FALSE(real.model.RepositoryExists(u"New"_s));
    EXPECT_TRUE(server.HiddenFolders().isEmpty());
    EXPECT_TRUE(created.isEmpty());
}

TEST_F(ImportTest, TheEndOfTheProviderEndsItAndTheNextCallFindsANewOne)
{
    ImportMonitor killing(server, [this](IcAsyncCall&) { KillProviders(server); });
    ExpectCode(RPC_E_DISCONNECTED, [&] { real.model.ImportRepository(u"New"_s, Dump(20'000), kDumpMode, killing); });
    EXPECT_TRUE(killing.WasInTheMiddle());
    EXPECT_TRUE(created.isEmpty());
    EXPECT_TRUE(real.model.GetRepositories().isEmpty());
}

} // namespace

} // namespace quenvolta::test
