#include "dashboard/dashboard_status.h"
#include "host/dashboard_view.h"
#include "real_model.h"
#include "ssh_server.h"
#include "support/page_hands.h"
#include "support/recorded_messages.h"

#include <QFile>

#include <gtest/gtest.h>
#include <unistd.h>

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

namespace
{

/// The panel that the true dashboard shows for a computer.
class DashboardCausesTest : public ::testing::Test
{
protected:
    DashboardCausesTest() { view.show(); }

    QString PanelFor(ChannelOptions options, const QString& computer)
    {
        RealModel real(std::move(options));
        real.model.SetComputer(computer, true);
        DashboardStatus status;
        status.server = CStatusSnapshot::Read(real.model);
        view.ShowStatus(status);
        if (view.Browser() == nullptr)
            view.Open(209);
        EXPECT_TRUE(view.WaitUntilDrawn(std::chrono::seconds(60)));
        return PageHands(view).Ask(u"[...document.querySelector('.central-block').children, "
                                   "document.getElementById('repositories-info-error')]"
                                   ".filter(e => e.getClientRects().length > 0)"
                                   ".map(e => e.id + ': ' + e.innerText).join('|')"_s);
    }
    ChannelOptions Ssh() const
    {
        ChannelOptions options;
        options.sshProgram = ssh.SshProgram();
        return options;
    }

    SshServer ssh;
    RealServer server;
    RecordedMessages messages;
    DashboardView view{messages, &LoadWebBrowser};
};

} // namespace

TEST_F(DashboardCausesTest, EachPanelIsReachedByItsCause)
{
    const auto expect = [](const QString& shown, const QString& panel) {
        EXPECT_TRUE(shown.startsWith(panel)) << shown.toStdString();
    };
    expect(PanelFor(Ssh(), u"testhost"_s), u"error-not-installed: "_s); // no provider there
    ssh.PutRemoteProgram(u"quenvolta-provider"_s, u"kill -SEGV $$"_s);
    expect(PanelFor(Ssh(), u"testhost"_s), u"error-broken-wmi: The server's management doesn't work"_s);
    ChannelOptions ending;
    ending.localProgram = u"false"_s;
    expect(PanelFor(ending, {}), u"error-broken-wmi: "_s);
    ssh.ForgetKey();
    expect(PanelFor(Ssh(), u"testhost"_s), u"error-access-denied: "_s);
    ssh.Stop();
    expect(PanelFor(Ssh(), u"testhost"_s), u"error-rpc: "_s);

    server.MakeWithSvnadmin(u"Some"_s);
    QFile::rename(server.RepositoriesFolder(), server.Scratch(u"away"_s));
    QFile file(server.RepositoriesFolder());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)); // a file can't be listed, not even by root
    file.close();
    expect(PanelFor(LocalOptions(server), {}), u"error: "_s);
}

} // namespace quenvolta::test
