#include "dashboard_test.h"
#include "support/qt_printers.h"

#include <QDir>
#include <QFile>
#include <QLabel>

#include <algorithm>
#include <csignal>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

using DashboardPageTest = test::DashboardTest;

const QStringList kErrorPanels{u"error"_s, u"error-rpc"_s, u"error-access-denied"_s, u"error-broken-wmi"_s,
                               u"error-not-installed"_s};
const QStringList kAlternatives{u"qdfssvc-state-available"_s,     u"qdfssvc-disabled"_s,
                                u"updates-available-info"_s,      u"updates-check-failure"_s,
                                u"updates-check-disabled"_s,      u"access-logging-disabled"_s,
                                u"access-logging-enabled"_s,      u"operational-logging-disabled"_s,
                                u"operational-logging-enabled"_s, u"subversion-auth"_s,
                                u"subversion-auth-error"_s,       u"windows-auth"_s,
                                u"basic-auth-disabled"_s,         u"basic-auth-enabled"_s,
                                u"integrated-auth-disabled"_s,    u"integrated-auth-enabled"_s,
                                u"repositories-info"_s,           u"repositories-info-error"_s,
                                u"bottom_links_wo_version"_s,     u"bottom_links_w_version"_s};

/// The processes that show pages, or are ready to: those of the web engine that others of it began (with a sandbox
/// there are some between), and that began none themselves.
QList<pid_t> PageProcesses()
{
    QHash<pid_t, pid_t> parents;
    QList<pid_t> pages;
    for (const QString& name : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
        QFile file(u"/proc/%1/stat"_s.arg(name));
        if (name.toInt() == 0 || !file.open(QIODevice::ReadOnly))
            continue;
        const QByteArray text = file.readAll();
        parents.insert(name.toInt(), text.mid(text.lastIndexOf(')') + 2).split(' ').value(1).toInt());
        if (text.contains("(QtWebEngine"))
            pages.append(name.toInt());
    }
    const auto isBelow = [&](pid_t process) {
        while (process > 1 && process != getpid())
            process = parents.value(process);
        return process == getpid();
    };
    const QList<pid_t> beginners = parents.values();
    pages.removeIf(
        [&](pid_t page) { return parents.value(page) == getpid() || beginners.contains(page) || !isBelow(page); });
    return pages;
}

} // namespace

TEST_F(DashboardPageTest, ShowsEachStateInOnePage)
{
    EXPECT_FALSE(test::MapsTheWebEngine());
    view.show();
    view.ShowStatus(status);
    QCoreApplication::processEvents();
    EXPECT_EQ(view.Browser(), nullptr);
    EXPECT_FALSE(test::MapsTheWebEngine()) << "nothing of it is loaded before the page is shown";

    Open();
    EXPECT_EQ(Text(u"state"_s), u"running");
    EXPECT_EQ(Text(u"url"_s), u"http://server/svn/");
    EXPECT_EQ(Text(u"qnvl_server_ver"_s), u"3.3.1");
    EXPECT_EQ(Seen(kErrorPanels), QStringList());
    EXPECT_EQ(Seen(kAlternatives),
              QStringList({u"qdfssvc-disabled"_s, u"access-logging-disabled"_s, u"operational-logging-disabled"_s,
                           u"subversion-auth"_s, u"repositories-info"_s, u"bottom_links_w_version"_s}));
    Ask(u"window.marker = 'the same page'"_s);

    status.server.httpServiceState = 9;
    status.server.qdfsService = ServiceStatus{.state = 4, .startMode = 4};
    status.server.settings.accessLogging = status.server.settings.operationalLogging = true;
    status.server.userCount = 12;
    status.server.groupCount = 3;
    status.server.repositoryCount = 100'000;
    status.update = {.status = UpdateCheckStatus::UpdateAvailable, .version = u"3.4"_s};
    Show();
    EXPECT_EQ(Text(u"state"_s), u"unexpected");
    EXPECT_EQ(Text(u"qdfssvc-state"_s), u"running");
    EXPECT_EQ(Text(u"users"_s) + u' ' + Text(u"groups"_s) + u' ' + Text(u"repositories-info-count"_s), u"12 3 100000");
    EXPECT_EQ(Text(u"updates-available-ver"_s), u"3.4");
    EXPECT_EQ(Seen(kAlternatives),
              QStringList({u"qdfssvc-state-available"_s, u"updates-available-info"_s, u"access-logging-enabled"_s,
                           u"operational-logging-enabled"_s, u"subversion-auth"_s, u"repositories-info"_s,
                           u"bottom_links_w_version"_s}));

    status.server.qdfsService.reset(); // older than 3.0
    status.server.accountsFailure = u"no users"_s;
    status.server.repositoriesFailure = u"no repositories"_s;
    status.update = {.status = UpdateCheckStatus::Failed, .errorText = u"no answer"_s};
    Show();
    EXPECT_EQ(Seen(kAlternatives),
              QStringList({u"updates-check-failure"_s, u"access-logging-enabled"_s, u"operational-logging-enabled"_s,
                           u"subversion-auth-error"_s, u"repositories-info-error"_s, u"bottom_links_w_version"_s}));
    EXPECT_EQ(Text(u"subversion-auth-error-message"_s), u"no users");
    EXPECT_EQ(Text(u"repositories-info-error-message"_s), u"no repositories");
    EXPECT_EQ(Text(u"updates-check-failure-msg"_s), u"no answer");

    status.server.settings.windowsAuthentication = true;
    status.server.settings.basicAuthentication = false;
    status.server.settings.integratedAuthentication = true;
    status.server.repositoriesFailure.clear();
    status.updateCheckDisabled = true;
    Show();
    EXPECT_EQ(Seen(kAlternatives),
              QStringList({u"updates-check-disabled"_s, u"access-logging-enabled"_s, u"operational-logging-enabled"_s,
                           u"windows-auth"_s, u"basic-auth-disabled"_s, u"integrated-auth-enabled"_s,
                           u"repositories-info"_s, u"bottom_links_w_version"_s}));

    for (int error = 1; error <= 5; ++error) {
        status.server.isRead = false;
        status.server.error = static_cast<StatusError>(error);
        status.server.errorText = u"Failure %1\nin two lines"_s.arg(error);
        for (const bool isStandalone : {false, true}) {
            status.isStandalone = isStandalone;
            Show();
            const QString panel = kErrorPanels[error - 1];
            EXPECT_EQ(Seen(kErrorPanels + QStringList{u"server-info"_s}), QStringList{panel});
            EXPECT_EQ(Seen(kAlternatives), error == 5 ? QStringList() : QStringList{u"bottom_links_wo_version"_s});
            EXPECT_EQ(Seen({u"connect-to-link"_s}).isEmpty(), error != 5 || !isStandalone);
            if (error != 5) {
                EXPECT_EQ(Text(panel + u"-message"_s), status.server.errorText);
            }
        }
    }
    EXPECT_EQ(Ask(u"window.marker"_s), u"the same page");

    status.server.isRead = true;
    status.updateCheckDisabled = false;
    status.update.status = static_cast<UpdateCheckStatus>(4);
    EXPECT_THROW(view.ShowStatus(status), Exception);
    EXPECT_EQ(messages.errors, QStringList());
    status.update = {};
    Ask(u"selectPanel = undefined"_s);
    view.ShowStatus(status);
    ASSERT_TRUE(test::WaitInLoop([this] { return !messages.errors.isEmpty(); }));
    EXPECT_TRUE(messages.errors.first().startsWith(u"Cannot get script object"_s))
        << messages.errors.first().toStdString();
}

TEST_F(DashboardPageTest, ShowsTextsAsTheirCharactersAndKeepsForeignThingsOut)
{
    const QString hostile =
        u"<b onclick=\"x\">'&amp;</b><script>window.pwned=1</script><a href='quenvolta://CreateUser/'>"
        "x</a><img src=x onerror='window.pwned=1'>${1}`\\u0041\u2028 https://x.example </span>"_s;
    status.server.settings.url = status.server.versions.version = hostile;
    status.server.accountsFailure = status.server.repositoriesFailure = hostile;
    status.update = {.status = UpdateCheckStatus::UpdateAvailable, .version = hostile};
    Open();
    for (const QString& id : {u"url"_s, u"qnvl_server_ver"_s, u"subversion-auth-error-message"_s,
                              u"repositories-info-error-message"_s, u"updates-available-ver"_s}) {
        EXPECT_EQ(Ask(u"document.getElementById('%1').textContent"_s.arg(id)), hostile);
        EXPECT_EQ(Ask(u"document.getElementById('%1').children.length"_s.arg(id)), u"0");
    }
    status.update = {.status = UpdateCheckStatus::Failed, .errorText = hostile};
    Show();
    EXPECT_EQ(Ask(u"document.getElementById('updates-check-failure-msg').textContent"_s), hostile);
    status.server.isRead = false;
    status.server.errorText = hostile;
    for (int error = 1; error <= 4; ++error) {
        status.server.error = static_cast<StatusError>(error);
        Show();
        EXPECT_EQ(Ask(u"document.getElementById('%1-message').textContent"_s.arg(kErrorPanels[error - 1])), hostile);
    }
    EXPECT_EQ(Ask(u"window.pwned"_s), u"undefined");

    // Even what got into the page couldn't do anything there.
    Ask(u"(window.blocked = [], document.addEventListener('securitypolicyviolation', e => "
        u"blocked.push(e.effectiveDirective)),"
        "['img', 'script', 'iframe', 'script'].forEach((name, i) => { var e = document.createElement(name);"
        "if (i < 3) e.src = 'http://127.0.0.1:9/x'; else e.textContent = 'window.pwned = 1'; document.body.append(e); "
        "}),"
        "fetch('http://127.0.0.1:9/').catch(() => 0))"_s);
    EXPECT_TRUE(WaitFor(u"blocked.length >= 5"_s));
    EXPECT_EQ(Ask(u"blocked.length"_s), u"5") << Ask(u"blocked"_s).toStdString();
    EXPECT_EQ(Ask(u"window.pwned"_s), u"undefined");
}

TEST_F(DashboardPageTest, LinksAreFollowedByClicksAlone)
{
    status.update = {.status = UpdateCheckStatus::UpdateAvailable, .version = u"3.4"_s};
    Open();
    Ask(u"window.marker = 1"_s);
    const auto expectFollowed = [this](const QString& selector, const QString& address) {
        followed.clear();
        ASSERT_TRUE(Click(selector)) << selector.toStdString();
        EXPECT_TRUE(test::WaitInLoop([this] { return !followed.isEmpty(); })) << selector.toStdString();
        EXPECT_EQ(followed.value(0).toLower(), address.toLower());
        EXPECT_EQ(followed.size(), 1);
    };
    for (std::size_t i = 0; i < kCommandLinkAddresses.size(); ++i) {
        const QString address = kCommandLinkAddresses[i];
        status.server.isRead = static_cast<CommandLink>(i) != CommandLink::ConnectToComputer;
        status.server.error = StatusError::NotInstalled;
        Show();
        expectFollowed(u"a[href=\"%1\"]"_s.arg(address), address);
    }
    status.server.isRead = false;
    status.server.error = StatusError::Unreachable;
    Show();
    expectFollowed(u"#error-rpc a"_s, u"https://help.quenvolta.example/go/2036/"_s);

    followed.clear();
    status.server.isRead = true;
    status.links = {CommandLink::CreateUser};
    Show();
    EXPECT_EQ(Ask(u"[...document.querySelectorAll('a')].filter(e => e.getClientRects().length > 0).length"_s), u"1");
    Ask(u"document.querySelector('a[href=\"quenvolta://CreateUser/\"]').click()"_s);
    Ask(u"(function () { var a = document.createElement('a'); a.href = 'quenvolta://CreateUser/'; a.click(); })()"_s);
    Ask(u"location.href = 'quenvolta://CreateUser/'"_s);
    Ask(u"location.href = 'https://x.example/'"_s);
    Ask(u"window.open('https://x.example/')"_s);
    expectFollowed(u"a[href=\"quenvolta://CreateUser/\"]"_s, u"quenvolta://CreateUser/"_s); // after all of these
    EXPECT_EQ(Ask(u"window.marker"_s), u"1") << "the page has stayed";

    // Keys reach the page, and F5 doesn't load it anew.
    Ask(u"document.addEventListener('keydown', e => window.lastKey = e.keyCode, true)"_s);
    QTest::keyClick(&Page(), Qt::Key_F5);
    EXPECT_TRUE(WaitFor(u"window.lastKey === 116"_s));
    followed.clear();
    Ask(u"document.querySelector('a[href=\"quenvolta://CreateUser/\"]').focus()"_s);
    QTest::keyClick(&Page(), Qt::Key_Return);
    EXPECT_TRUE(test::WaitInLoop([this] { return followed.size() == 1; }));
    EXPECT_EQ(Ask(u"window.marker"_s), u"1");
}

TEST_F(DashboardPageTest, GivesWayToThePlainPageWhenItEndsAndComesBack)
{
    Open();
    const QList<pid_t> pages = PageProcesses();
    ASSERT_FALSE(pages.isEmpty());
    for (const pid_t page : pages)
        ::kill(page, SIGKILL);
    ASSERT_TRUE(test::WaitInLoop([this] { return view.IsPlain(); }));
    // One that the engine keeps ready for the next page was killed too, and it must have noticed.
    ASSERT_TRUE(test::WaitInLoop([&] {
        return std::ranges::none_of(pages, [](pid_t page) { return QFile::exists(u"/proc/%1"_s.arg(page)); });
    }));
    EXPECT_TRUE(view.findChild<QLabel*>(u"dashboardNotice"_s)->text().contains(u"ended unexpectedly"_s));
    EXPECT_EQ(view.findChild<QLabel*>(u"httpService"_s)->text(), u"running");
    Open();
    ASSERT_FALSE(view.IsPlain());
    EXPECT_EQ(Text(u"state"_s), u"running");
}

namespace
{

class NoBrowserTest : public test::DashboardTest
{
protected:
    NoBrowserTest()
        : DashboardTest([](IcWebBrowserEvents&, std::unique_ptr<IWebBrowser>*) { return WebBrowserFault::NoSandbox; })
    {
    }
};

} // namespace

TEST_F(NoBrowserTest, ShowsThePlainPageAndSaysWhy)
{
    view.show();
    view.ShowStatus(status);
    for (int i = 0; i < 2; ++i) {
        view.Open(kPage);
        ASSERT_TRUE(test::WaitInLoop([this] { return view.IsPlain(); }));
        auto* notice = view.findChild<QLabel*>(u"dashboardNotice"_s);
        EXPECT_TRUE(notice->isVisible());
        EXPECT_TRUE(notice->text().contains(u"sandbox"_s)) << notice->text().toStdString();
        EXPECT_TRUE(view.findChild<QLabel*>(u"httpService"_s)->isVisible());
    }
}

} // namespace quenvolta
