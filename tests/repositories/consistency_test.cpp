#include "foundation/exception.h"
#include "repositories/consistency_check.h"
#include "repositories_test.h"
#include "support/recorded_messages.h"

namespace quenvolta::test
{

TEST_F(RepositoriesTest, ASlaveThatAgreesWithItsMasterIsToldAndAFailureIsTheCallers)
{
    RecordedMessages messages;
    CheckConsistency(nullptr, model, messages, u"r"_s);
    EXPECT_EQ(messages.texts, QStringList(u"Repository 'r' is consistent with the master repository."_s));
    EXPECT_EQ(server.CallsOf(u"CheckReplicationConsistency"_s).size(), 1);

    server.Fail(Operation::ExecMethod, u"CheckReplicationConsistency"_s, {E_FAIL});
    EXPECT_THROW(CheckConsistency(nullptr, model, messages, u"r"_s), Exception);
    EXPECT_EQ(messages.texts.size(), 1);
}

} // namespace quenvolta::test
