#include "foundation/com_exception.h"
#include "foundation/server_not_installed_exception.h"
#include "real_model.h"
#include "ssh_server.h"

#include <gtest/gtest.h>

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

namespace
{

class SshTest : public ::testing::Test
{
protected:
    void PutProvider() const
    {
        ssh.PutRemoteProgram(u"quenvolta-provider"_s,
                             u"exec '%1' --data '%2' \"$@\""_s.arg(RealServer::ProviderProgram(), server.DataFolder()));
    }

    ChannelOptions Options() const
    {
        ChannelOptions options;
        options.sshProgram = ssh.SshProgram();
        options.localProgram = u"/nonexistent/no-local-server"_s;
        return options;
    }

    // The failure of connecting to a computer; its words go to `words`.
    HRESULT CodeOfConnecting(const QString& computer, QString* words) const
    {
        RealModel real(Options());
        try {
            real.model.Connect(computer);
        } catch (const ComException& failure) {
            *words = failure.GetMessage();
            EXPECT_TRUE(real.preferences.servers.isEmpty());
            return failure.Code();
        }
        return S_OK;
    }

    SshServer ssh;
    RealServer server;
};

TEST_F(SshTest, ANamedComputerIsManagedLikeTheLocalOne)
{
    PutProvider();
    ssh.SetLoginNoise(u"Welcome to testhost!\n\tLast login: never\n"_s);
    server.MakeWithSvnadmin(u"Remote"_s);
    RealModel real(Options());
    real.model.SetComputer(u"testhost"_s, false);
    EXPECT_EQ(real.preferences.servers, QStringList{u"testhost"_s});
    ASSERT_EQ(real.model.GetRepositories().size(), 1);
    real.model.CreateRepository(u"Second"_s, true);
    EXPECT_EQ(server.Svn({u"ls"_s, server.FileUrl(u"Second"_s)}), u"branches/\ntags/\ntrunk/\n"_s);
    EXPECT_EQ(ProvidersOf(server).size(), 1);

    // What a restart of the remote computer does to the connection.
    KillProviders(server);
    EXPECT_EQ(real.model.GetRepositories().size(), 2);
}

TEST_F(SshTest, EachFailureHasItsCodeAndTheWordsOfItsCause)
{
    QString words;
    RealModel real(Options());
    try {
        real.model.Connect(u"testhost"_s);
        FAIL() << "there is no provider on the computer";
    } catch (const ServerNotInstalledException& failure) {
        EXPECT_EQ(failure.GetMessage(), u"Quenvolta Server is not installed on the computer 'testhost'"_s);
    }
    PutProvider();
    EXPECT_EQ(CodeOfConnecting(u"no-such-host.invalid"_s, &words), RPC_S_SERVER_UNAVAILABLE);
    EXPECT_TRUE(words.contains(u"no-such-host.invalid"_s)) << words.toStdString();
    for (const QString& hostile :
         {u"-oProxyCommand=touch pwned"_s, u"a b"_s, u"a;touch x"_s, u"$(id)"_s, u"a\nb"_s, u"'a'"_s}) {
        EXPECT_EQ(CodeOfConnecting(hostile, &words), HR_INVALID_COMPUTER_NAME) << hostile.toStdString();
    }

    ssh.ForgetKey();
    EXPECT_EQ(CodeOfConnecting(u"testhost"_s, &words), E_ACCESSDENIED);
    EXPECT_TRUE(words.contains(u"Permission denied"_s)) << words.toStdString();
    // A host that ssh has no key of is refused, not asked about.
    EXPECT_EQ(CodeOfConnecting(u"127.0.0.1:%1"_s.arg(ssh.Port()), &words), E_ACCESSDENIED) << words.toStdString();

    ssh.Stop();
    EXPECT_EQ(CodeOfConnecting(u"testhost"_s, &words), RPC_S_SERVER_UNAVAILABLE);
    EXPECT_TRUE(words.contains(u"refused"_s)) << words.toStdString();
}

} // namespace

} // namespace quenvolta::test
