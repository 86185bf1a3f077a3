#include "foundation/com_exception.h"
#include "support/local_web_service.h"
#include "support/modal_driver.h"
#include "support/page_hands.h"
#include "updates/update_site.h"
#include "window_test.h"

#include <QLabel>
#include <QPushButton>

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::Operation;

namespace
{

constexpr std::chrono::seconds kPatience(30);

/// The whole window with the true web view, on a stand-in server that has an update.
class WindowDashboardTest : public test::WindowTest
{
protected:
    WindowDashboardTest()
    {
        qunsetenv("QUENVOLTA_DASHBOARD"); // the true one
        qputenv("no_proxy", "*");
        qputenv("QUENVOLTA_UPDATE_SITE", updates.Address().toUtf8());
        updateService = UpdateSite().Service();
        AnswerUpdate(u"3.4"_s);
        for (int kind = 1; kind <= static_cast<int>(DialogKind::EditGroup); ++kind)
            noted.Add(static_cast<DialogKind>(kind), [this, kind](const DialogRequest& request) {
                EXPECT_NE(request.parent, nullptr);
                Note(u"dialog %1 page %2"_s.arg(kind).arg(request.page));
                return true;
            });
        dialogs = &noted;
        server.data.users = {u"ann"_s};
    }
    ~WindowDashboardTest() override
    {
        qputenv("QUENVOLTA_DASHBOARD", "plain");
        qunsetenv("QUENVOLTA_UPDATE_SITE");
    }

    void AnswerUpdate(const QString& version)
    {
        updates.Answer(u"/server/UpdateCheck.ashx"_s,
                       "<Response><Update><Version>" + version.toHtmlEscaped().toUtf8() +
                           "</Version><Date>133000000000000000</Date><LearnMore>/more</LearnMore>"
                           "<Download>/get</Download></Update></Response>");
    }
    void OpenPage()
    {
        Open();
        page.emplace(View());
        ASSERT_TRUE(window->WaitUntilDrawn(kPatience));
        ASSERT_FALSE(View().IsPlain());
        page->Ask(u"window.marker = 'the same page'"_s);
    }
    DashboardView& View() { return *window->findChild<DashboardView*>(); }
    bool Shows(const QString& id, const QString& text)
    {
        return page->WaitFor(u"document.getElementById('%1').innerText === '%2'"_s.arg(id, text));
    }
    bool ShowsPanel(const QString& id)
    {
        return page->WaitFor(u"document.getElementById('%1').getClientRects().length > 0"_s.arg(id));
    }
    void ExpectSamePage() { EXPECT_EQ(page->Ask(u"window.marker"_s), u"the same page"); }
    /// With F5 in the tree.
    void Refresh()
    {
        window->activateWindow(); // a dialog that has gone leaves no active window on this platform
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        Press(Tree(), Qt::Key_F5);
    }
    static QString Link(const QString& name) { return u"a[href=\"quenvolta://%1/\"]"_s.arg(name); }

    void Note(const QString& what) { done.append(what); }
    /// Clicks a link; what was done then.
    QStringList Follow(const QString& selector)
    {
        done.clear();
        shell.asked.clear();
        messages.texts.clear();
        EXPECT_TRUE(page->Click(selector)) << selector.toStdString();
        const auto all = [this] { return done + shell.asked + messages.texts; };
        EXPECT_TRUE(test::WaitInLoop([&] { return !all().isEmpty(); })) << selector.toStdString();
        return all();
    }

    test::LocalWebService updates;
    DialogTable noted;
    QStringList done;
    std::optional<test::PageHands> page;
};

/// Sees a widget being painted for the first time in a state.
class PaintWatch final : public QObject
{
public:
    PaintWatch(QWidget& widget, std::function<bool()> isThere)
        : m_isThere(std::move(isThere))
    {
        widget.installEventFilter(this);
    }

    bool hasPainted = false;
    bool hadWebEngine = false;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (!hasPainted && event->type() == QEvent::Paint && m_isThere()) {
            hasPainted = true;
            hadWebEngine = test::MapsTheWebEngine();
        }
        return false;
    }

private:
    std::function<bool()> m_isThere;
};

QString Dialog(DialogKind kind, int page = 0)
{
    return u"dialog %1 page %2"_s.arg(static_cast<int>(kind)).arg(page);
}

} // namespace

TEST_F(WindowDashboardTest, TheWindowIsUsableBeforeThePage)
{
    window = std::make_unique<ConsoleWindow>(about, messages, &state);
    window->LoadWhenPainted([this] { return CreateSnapIn(); });
    PaintWatch watch(*Tree().viewport(), [this] { return Tree().model()->rowCount(RootIndex()) == 3; });
    window->show();
    ASSERT_TRUE(test::WaitInLoop([&] { return watch.hasPainted; }));
    EXPECT_FALSE(watch.hadWebEngine);
    EXPECT_TRUE(window->WaitUntilDrawn(kPatience));
    EXPECT_TRUE(test::MapsTheWebEngine());
}

TEST_F(WindowDashboardTest, F5ShowsTheServerAnewInTheSamePage)
{
    OpenPage();
    EXPECT_TRUE(Shows(u"users"_s, u"1"_s));
    EXPECT_TRUE(ShowsPanel(u"updates-available-info"_s)); // came later than the page
    server.data.users = {u"ann"_s, u"bob"_s};
    ASSERT_TRUE(page->Click(u"h2"_s));
    ASSERT_TRUE(View().isAncestorOf(QApplication::focusWidget()));
    QTest::keyClick(&page->Page(), Qt::Key_F5);
    EXPECT_TRUE(Shows(u"users"_s, u"2"_s));

    server.data.service[u"ServiceState"_s] = 1U;
    Tree().setFocus();
    Refresh();
    EXPECT_TRUE(Shows(u"state"_s, u"stopped"_s));
    server.hasNamespace = false;
    Refresh();
    EXPECT_TRUE(ShowsPanel(u"error-not-installed"_s));
    EXPECT_EQ(Rows(*Tree().model(), RootIndex()), QStringList());
    server.hasNamespace = true;
    QTest::keyClick(&page->Page(), Qt::Key_F5);
    EXPECT_TRUE(ShowsPanel(u"server-info"_s));
    ExpectSamePage();
}

TEST_F(WindowDashboardTest, EachLinkDoesWhatItSays)
{
    using Kind = DialogKind;
    server.data.qdfsService[u"ServiceState"_s] = 1U;
    server.data.qdfsService[u"StartMode"_s] = 4U;
    OpenPage();
    ASSERT_TRUE(ShowsPanel(u"updates-available-info"_s));
    const std::pair<QString, QString> kLinks[]{
        {u"Browse"_s, u"open https://srv1/svn/"_s},
        {u"CreateUser"_s, Dialog(Kind::CreateUser)},
        {u"CreateGroup"_s, Dialog(Kind::CreateGroup)},
        {u"CreateRepository"_s, Dialog(Kind::CreateRepository)},
        {u"ImportRepository"_s, Dialog(Kind::ImportRepository)},
        {u"ProvideFeedback"_s, u"open https://feedback.quenvolta.example/?qnvl-server=3.3.1"_s},
        {u"SubscribeForUpdates"_s, u"open https://help.quenvolta.example/go/2031/"_s},
        {u"OpenEventViewer"_s, u"events "_s},
        {u"ConfigureLogging"_s, Dialog(Kind::ServerProperties, 5)},
        {u"ConfigureAuth"_s, Dialog(Kind::ServerProperties, 4)},
        {u"EnableQdfsService"_s, LoadString(StringId::kAskEnableQdfs)}, // answered No
    };
    for (const auto& [link, action] : kLinks)
        EXPECT_EQ(Follow(Link(link)), QStringList{action});
    EXPECT_EQ(server.CallsOf(u"ChangeStartMode"_s).size(), 0);
    messages.answer = MessageAnswer::Yes;
    EXPECT_TRUE(Follow(Link(u"EnableQdfsService"_s)).contains(LoadString(StringId::kAskEnableQdfs)));
    EXPECT_TRUE(test::WaitInLoop([&] { return done == QStringList{Dialog(Kind::ServiceState)}; }));
    EXPECT_TRUE(ShowsPanel(u"qdfssvc-state-available"_s));

    {
        test::ModalDriver driver([this](QWidget& dialog) {
            Note(dialog.windowTitle() + u'|' + dialog.findChild<QLabel*>(u"version"_s)->text());
            dialog.close();
        });
        EXPECT_EQ(Follow(Link(u"VersionInfo"_s)),
                  QStringList{u"About Quenvolta Server|Version 3.3.1 (Subversion 1.14.2, Apache 2.4.62)"_s});
    }
    {
        test::ModalDriver driver([this](QWidget& dialog) {
            Note(dialog.windowTitle() + u'|' + dialog.findChild<QLabel*>(u"availableVersion"_s)->text());
            dialog.findChild<QPushButton*>(u"download"_s)->click();
        });
        EXPECT_EQ(Follow(Link(u"ServerUpdate"_s)),
                  QStringList({u"Software Update|3.4"_s, u"open "_s + updates.Address() + u"/get"_s}));
    }

    messages.answer = MessageAnswer::No;
    server.data.users.clear();
    EXPECT_EQ(Follow(Link(u"Browse"_s)), QStringList{LoadString(StringId::kNoUsersForUrl)});
    server.Fail(Operation::GetObject, u"Quenvolta_Service"_s, {RPC_S_SERVER_UNAVAILABLE}, -1);
    Refresh();
    ASSERT_TRUE(ShowsPanel(u"error-rpc"_s));
    EXPECT_EQ(Follow(u"#error-rpc a"_s), QStringList{u"open https://help.quenvolta.example/go/2036/"_s});
    server.hasNamespace = false;
    Refresh();
    ASSERT_TRUE(ShowsPanel(u"error-not-installed"_s));
    EXPECT_EQ(Follow(Link(u"ConnectToComputer"_s)), QStringList{Dialog(Kind::SelectComputer)});
    ExpectSamePage();
    EXPECT_EQ(messages.errors, QStringList());
}

TEST_F(WindowDashboardTest, WhatAServerSaysStaysText)
{
    const QString hostile = u"'\"><b>x</b><script>window.pwned=1</script>"
                            "<a href=\"quenvolta://CreateUser/\">y</a><img src=x onerror=\"window.pwned=1\">&lt;"_s;
    server.data.service[u"URL"_s] = u"http://srv1/"_s + hostile;
    server.data.versionInfo[u"SubversionVersion"_s] = hostile;
    AnswerUpdate(hostile);
    server.Fail(Operation::EnumerateInstances, u"Quenvolta_Repository"_s,
                {WBEM_E_FAILED, server.ExtendedError(hostile)}, -1);
    server.Fail(Operation::EnumerateInstances, u"Quenvolta_User"_s, {WBEM_E_FAILED, server.ExtendedError(hostile)}, -1);
    OpenPage();
    ASSERT_TRUE(ShowsPanel(u"updates-available-info"_s));
    const auto expectText = [&](const QString& id) {
        const QString text = page->Ask(u"document.getElementById('%1').textContent"_s.arg(id));
        EXPECT_TRUE(text.contains(hostile)) << id.toStdString() << ": " << text.toStdString();
        EXPECT_EQ(page->Ask(u"document.getElementById('%1').children.length"_s.arg(id)), u"0");
    };
    for (const QString& id : {u"url"_s, u"updates-available-ver"_s, u"repositories-info-error-message"_s,
                              u"subversion-auth-error-message"_s})
        expectText(id);
    server.Fail(Operation::GetObject, u"Quenvolta_Service"_s, {WBEM_E_FAILED, server.ExtendedError(hostile)}, -1);
    Refresh();
    ASSERT_TRUE(ShowsPanel(u"error"_s));
    expectText(u"error-message"_s);
    EXPECT_EQ(page->Ask(u"window.pwned"_s), u"undefined");
    EXPECT_EQ(done + shell.asked, QStringList());
    ExpectSamePage();
}

} // namespace quenvolta
