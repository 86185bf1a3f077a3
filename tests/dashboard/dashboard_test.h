#pragma once

#include "dashboard/dashboard_status.h"
#include "host/dashboard_view.h"
#include "support/recorded_messages.h"

#include <QEventLoop>
#include <QTest>

#include <gtest/gtest.h>

namespace quenvolta::test
{

/// Waits in an event loop as the program's own: the web engine misses wake-ups in one that only polls.
template <typename Condition>
bool WaitInLoop(Condition&& isMet)
{
    QEventLoop loop;
    QTimer look;
    look.callOnTimeout(&loop, [&] {
        if (isMet())
            loop.quit();
    });
    look.start(5);
    QTimer::singleShot(std::chrono::seconds(30), &loop, [&] { loop.exit(1); });
    return loop.exec() == 0;
}

/// The dashboard in the true web view.
class DashboardTest : public testing::Test
{
protected:
    static constexpr int kPage = 209;

    explicit DashboardTest(WebBrowserSource source = &LoadWebBrowser)
        : view(messages, std::move(source))
    {
        view.resize(900, 700);
        status.server.isRead = true;
        status.server.httpServiceState = 4;
        status.server.qdfsService = ServiceStatus{.state = 1, .startMode = 4};
        status.server.settings.url = QStringLiteral("http://server/svn/");
        status.server.versions = {QStringLiteral("3.3.1"), QStringLiteral("1.14"), QStringLiteral("2.4")};
        for (std::size_t i = 0; i < kCommandLinkAddresses.size(); ++i)
            status.links.insert(static_cast<CommandLink>(i));
        view.SetLinkHandler([this](const QString& address) {
            followed.append(address);
            return true;
        });
    }

    /// Opens the page and waits until it shows the status.
    void Open()
    {
        view.show();
        view.ShowStatus(status);
        view.Open(kPage);
        ASSERT_TRUE(view.WaitUntilDrawn(std::chrono::seconds(30)));
        ASSERT_FALSE(view.IsPlain());
    }
    void Show()
    {
        view.ShowStatus(status);
        ASSERT_TRUE(view.WaitUntilDrawn(std::chrono::seconds(30)));
    }

    /// What an expression is in the page, as a text.
    QString Ask(const QString& expression)
    {
        const auto answer = std::make_shared<std::optional<QString>>();
        view.Browser()->RunScript(QStringLiteral("String(%1)").arg(expression),
                                  [answer](const QString& text) { *answer = text; });
        WaitInLoop([&] { return answer->has_value(); });
        EXPECT_TRUE(answer->has_value()) << expression.toStdString();
        return answer->value_or(QString());
    }
    QString Text(const QString& id) { return Ask(QStringLiteral("document.getElementById('%1').innerText").arg(id)); }
    /// Those of the elements that are to be seen.
    QStringList Seen(const QStringList& ids)
    {
        QStringList seen;
        for (const QString& id : ids) {
            if (Ask(QStringLiteral("document.getElementById('%1').getClientRects().length > 0").arg(id)) == u"true")
                seen.append(id);
        }
        return seen;
    }
    /// Clicks the first visible element that a selector names, as a person does; false when there is none.
    bool Click(const QString& selector)
    {
        const QString place = Ask(QStringLiteral("(function () {"
                                                 "var found = [...document.querySelectorAll('%1')].filter("
                                                 "e => e.getClientRects().length > 0)[0];"
                                                 "if (!found) return '';"
                                                 "found.scrollIntoView({block: 'center'});"
                                                 "var r = found.getClientRects()[0];"
                                                 "return Math.round(r.x + r.width / 2) + ' ' +"
                                                 "Math.round(r.y + r.height / 2);})()")
                                      .arg(selector));
        if (place.isEmpty())
            return false;
        QTest::mouseClick(view.Browser()->Widget().focusProxy(), Qt::LeftButton, {},
                          {place.section(u' ', 0, 0).toInt(), place.section(u' ', 1).toInt()});
        return true;
    }

    RecordedMessages messages;
    DashboardStatus status;
    QStringList followed;
    DashboardView view;
};

} // namespace quenvolta::test
