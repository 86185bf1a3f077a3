#pragma once

#include "host/dashboard_view.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>
#include <memory>
#include <optional>

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

/// Whether this process has loaded the web engine.
inline bool MapsTheWebEngine()
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    EXPECT_TRUE(maps.open(QIODevice::ReadOnly));
    return maps.readAll().contains("WebEngineCore");
}

/// Looks at the page of a dashboard and uses it as a person does.
class PageHands
{
public:
    explicit PageHands(DashboardView& view)
        : m_view(view)
    {
    }

    /// What an expression is in the page, as a text.
    QString Ask(const QString& expression)
    {
        const auto answer = std::make_shared<std::optional<QString>>();
        if (m_view.Browser() == nullptr) {
            ADD_FAILURE() << "there is no page to ask: " << expression.toStdString();
            return {};
        }
        m_view.Browser()->RunScript(QStringLiteral("String(%1)").arg(expression),
                                    [answer](const QString& text) { *answer = text; });
        WaitInLoop([&] { return answer->has_value(); });
        EXPECT_TRUE(answer->has_value()) << expression.toStdString();
        return answer->value_or(QString());
    }
    /// Waits until an expression is true in the page.
    bool WaitFor(const QString& condition)
    {
        QElapsedTimer timer;
        timer.start();
        while (Ask(condition) != u"true") {
            if (timer.hasExpired(30'000))
                return false;
        }
        return true;
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
    /// Clicks the first visible element that a selector names; false when there is none.
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
        QTest::mouseClick(&Page(), Qt::LeftButton, {},
                          {place.section(u' ', 0, 0).toInt(), place.section(u' ', 1).toInt()});
        return true;
    }
    /// What gets the page's mouse and keys.
    QWidget& Page() { return *m_view.Browser()->Widget().focusProxy(); }

private:
    DashboardView& m_view;
};

} // namespace quenvolta::test
