#pragma once

#include "dashboard/dashboard_files.h"
#include "host/console_program.h"
#include "host/console_window.h"
#include "host/web_browser_loader.h"

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QTimer>
#include <QTreeView>

#include <chrono>
#include <cstdint>
#include <cstdio>

namespace quenvolta::bench
{

inline constexpr int kDashboardResource = 209;

/// A moment that processes of one machine agree about.
inline std::int64_t NowInMicroseconds()
{
    return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

/// The memory of this process and of the web engine's processes below it, in KiB; what processes share counts once.
inline std::int64_t MemoryInKiB()
{
    const auto read = [](const QString& name) {
        QFile file(QStringLiteral("/proc/") + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    QList<QByteArray> processes{QByteArray::number(QCoreApplication::applicationPid())};
    std::int64_t all = 0;
    for (qsizetype i = 0; i < processes.size(); ++i) {
        const QString process = QString::fromLatin1(processes[i]);
        if (i > 0 && !read(process + QStringLiteral("/comm")).startsWith("QtWebEngine"))
            continue;
        for (const QByteArray& line : read(process + QStringLiteral("/smaps_rollup")).split('\n')) {
            if (line.startsWith("Pss:"))
                all += line.simplified().split(' ').value(1).toLongLong();
        }
        for (const QString& thread : QDir(QStringLiteral("/proc/%1/task").arg(process)).entryList(QDir::Dirs))
            processes +=
                read(process + QStringLiteral("/task/") + thread + QStringLiteral("/children")).simplified().split(' ');
        processes.removeAll({});
    }
    return all;
}

/// A process that starts, reaches a goal, prints how long that took and what memory it has then, and ends.
class Child final : public QObject
{
public:
    /// `start` is when its parent started it.
    explicit Child(std::int64_t start)
        : m_start(start)
    {
    }

    /// A window with an empty tree, until it is painted.
    int OpenBareWindow()
    {
        QMainWindow window;
        auto* tree = new QTreeView(&window);
        window.setCentralWidget(tree);
        m_goal = [] { return true; };
        qApp->installEventFilter(this);
        window.show();
        return QApplication::exec();
    }

    /// The console on the local server, until its tree shows the server and has been painted.
    int OpenConsole()
    {
        m_goal = [this] { return HasServer(); };
        qApp->installEventFilter(this);
        return RunConsole({});
    }

    /// The same, until the dashboard is drawn.
    int OpenConsoleWithDashboard()
    {
        m_goal = [this] { return HasServer(); };
        m_then = [this] {
            if (Console().WaitUntilDrawn(std::chrono::seconds(60)))
                Finish();
            else
                QApplication::exit(EXIT_FAILURE);
        };
        qApp->installEventFilter(this);
        return RunConsole({});
    }

    /// Nothing but a web view with the page as it stands in the resources, until it is drawn.
    int OpenBarePage()
    {
        struct Events final : IcWebBrowserEvents {
            void OnTitleChange(const QString& title) override { isLoaded = isLoaded || title == u"loaded"; }
            void OnLink(const QUrl&) override {}
            void OnEnded() override {}
            bool isLoaded = false;
        } events;
        DashboardFile(QString::number(kDashboardResource)); // has the resources ready
        std::unique_ptr<IWebBrowser> browser;
        if (LoadWebBrowser(events, &browser) != WebBrowserFault::None)
            return EXIT_FAILURE;
        browser->Widget().resize(700, 560);
        browser->Widget().show();
        browser->Navigate(kDashboardResource);
        QTimer look;
        bool isAsked = false;
        look.callOnTimeout(this, [&] {
            if (!events.isLoaded || std::exchange(isAsked, true))
                return;
            browser->RunScript(QStringLiteral("requestAnimationFrame(() => requestAnimationFrame(() => "
                                              "{ window.drawn = 'yes'; })), ''"),
                               {});
            Poll(*browser);
        });
        look.start(1);
        const int result = QApplication::exec();
        look.stop();
        return result;
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const auto* viewport = qobject_cast<QWidget*>(watched);
        if (event->type() == QEvent::Paint && viewport != nullptr && m_goal &&
            qobject_cast<QTreeView*>(viewport->parentWidget()) != nullptr && m_goal()) {
            m_goal = nullptr;
            if (m_then)
                QMetaObject::invokeMethod(this, m_then, Qt::QueuedConnection);
            else
                Finish(); // now: what waits behind this paint is no part of it
        }
        return false;
    }

private:
    static ConsoleWindow& Console()
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* window = qobject_cast<ConsoleWindow*>(widget))
                return *window;
        }
        std::fprintf(stderr, "there is no console\n");
        std::exit(EXIT_FAILURE);
    }
    static bool HasServer()
    {
        const ScopeEntry* root = Console().Host().Tree().Root();
        return root != nullptr && !root->children.empty();
    }
    void Poll(IWebBrowser& browser)
    {
        browser.RunScript(QStringLiteral("window.drawn"), [this, &browser](const QString& text) {
            if (text.isEmpty())
                QTimer::singleShot(1, this, [this, &browser] { Poll(browser); });
            else
                Finish();
        });
    }
    /// Prints what was reached, and ends.
    void Finish() const
    {
        const std::int64_t took = NowInMicroseconds() - m_start;
        std::printf("%lld %lld\n", static_cast<long long>(took), static_cast<long long>(MemoryInKiB()));
        QApplication::exit(EXIT_SUCCESS);
    }

    std::int64_t m_start;
    std::function<bool()> m_goal;
    std::function<void()> m_then;
};

} // namespace quenvolta::bench
