#include "foundation/com_exception.h"
#include "host/connection_watch.h"
#include "real_model.h"
#include "ssh_server.h"
#include "support/modal_driver.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>

#include <csignal>
#include <gtest/gtest.h>

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

namespace
{

/// ssh with a person: an askpass program notes each prompt and gives the answer that the test set.
class SshPromptsTest : public ::testing::Test
{
protected:
    SshPromptsTest()
    {
        ssh.PutRemoteProgram(u"quenvolta-provider"_s,
                             u"exec '%1' --data '%2' \"$@\""_s.arg(RealServer::ProviderProgram(), server.DataFolder()));
        ssh.AllowPrompts();
        options.sshProgram = ssh.SshProgram();
        options.sshEnvironment = {{u"SSH_ASKPASS"_s, ssh.AskpassProgram()}, {u"SSH_ASKPASS_REQUIRE"_s, u"force"_s}};
    }

    /// The failure of connecting; its words go to `words`.
    HRESULT Connect()
    {
        RealModel real(options);
        try {
            real.model.Connect(u"testhost"_s);
        } catch (const ComException& failure) {
            words = failure.GetMessage();
            return failure.Code();
        }
        return S_OK;
    }

    SshServer ssh;
    RealServer server;
    ChannelOptions options;
    QString words;
};

TEST_F(SshPromptsTest, AnUnknownKeyIsAskedForWithItsFingerprint)
{
    ssh.ForgetHost();
    ssh.SetAnswer(u"no"_s);
    EXPECT_EQ(Connect(), E_ACCESSDENIED);
    EXPECT_TRUE(words.contains(u"isn't trusted"_s)) << words.toStdString();
    EXPECT_TRUE(ssh.Prompts().contains(ssh.HostFingerprint())) << ssh.Prompts().toStdString();
    ssh.SetAnswer(u"yes"_s);
    EXPECT_EQ(Connect(), S_OK) << words.toStdString();
    ssh.SetAnswer(u"no"_s);
    EXPECT_EQ(Connect(), S_OK) << words.toStdString(); // known from now on
}

TEST_F(SshPromptsTest, AChangedKeyIsRefusedUnasked)
{
    ssh.ChangeKnownKey();
    ssh.SetAnswer(u"yes"_s);
    EXPECT_EQ(Connect(), E_ACCESSDENIED);
    EXPECT_TRUE(words.contains(u"has changed"_s)) << words.toStdString();
    EXPECT_EQ(ssh.Prompts(), QString());
}

TEST_F(SshPromptsTest, APassphraseIsAskedFor)
{
    ssh.EncryptKey(u"open sesame"_s);
    ssh.SetAnswer(u"wrong"_s);
    EXPECT_EQ(Connect(), E_ACCESSDENIED);
    EXPECT_TRUE(ssh.Prompts().contains(u"passphrase"_s)) << ssh.Prompts().toStdString();
    ssh.SetAnswer(u"open sesame"_s);
    EXPECT_EQ(Connect(), S_OK) << words.toStdString();
}

TEST_F(SshPromptsTest, AFrozenLinkIsNoticed)
{
    options.sshArguments = {u"-o"_s, u"ServerAliveInterval=1"_s}; // in place of the 15 seconds
    RealModel real(options);
    real.model.Connect(u"testhost"_s);
    EXPECT_EQ(real.model.GetRepositories().size(), 0);
    ssh.Freeze();
    QElapsedTimer timer;
    timer.start();
    EXPECT_THROW(real.model.GetRepositories(), ComException);
    EXPECT_LT(timer.elapsed(), 45'000);
}

TEST_F(SshPromptsTest, ConnectingShowsWhatItWaitsForAndCanBeCancelled)
{
    ssh.PutRemoteProgram(u"quenvolta-provider"_s, u"exec sleep 600"_s);
    ConnectionWatch watch;
    options.isStillWanted = [&](const QString& computer) { return watch.IsStillWanted(computer); };
    QString shown;
    const ModalDriver driver([&](QWidget& modal) {
        shown = modal.findChild<QLabel*>(u"computer"_s)->text();
        dynamic_cast<QDialog&>(modal).reject();
    });
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(Connect(), HR_CANCELLED);
    EXPECT_TRUE(shown.contains(u"'testhost'"_s));
    EXPECT_TRUE(words.contains(u"cancelled"_s)) << words.toStdString();
    EXPECT_LT(timer.elapsed(), 20'000);
}

} // namespace

} // namespace quenvolta::test
