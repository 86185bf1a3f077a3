// How soon the console can be used, how soon its dashboard is drawn, what it costs to write a status into the page, and
// the memory of the web view. What starts is a process of its own each time: this program, as a child of itself.
#include "bench_server.h"
#include "dashboard/dashboard_renderer.h"
#include "dashboard_child.h"
#include "host/dashboard_view.h"
#include "host/printed_messages.h"
#include "ratio_report.h"

#include <algorithm>
#include <cstring>
#include <optional>

using namespace quenvolta;
using namespace quenvolta::bench;

namespace
{

constexpr int kRepetitions = 9;

constexpr std::array kChildren{
    std::pair{"bare_window", &Child::OpenBareWindow},
    std::pair{"usable_window", &Child::OpenConsole},
    std::pair{"bare_page", &Child::OpenBarePage},
    std::pair{"drawn_dashboard", &Child::OpenConsoleWithDashboard},
};

using Memories = std::map<std::string, std::vector<std::int64_t>>;

void Start(benchmark::State& state, const char* name, Memories& memories)
{
    for (auto unused : state) {
        QProcess child;
        child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        child.start(QCoreApplication::applicationFilePath(),
                    {QStringLiteral("--child"), QString::fromLatin1(name), QString::number(NowInMicroseconds())});
        child.waitForFinished(-1);
        const QList<QByteArray> said = child.readAllStandardOutput().simplified().split(' ');
        if (child.exitCode() != 0 || said.size() != 2) {
            state.SkipWithError("the child failed");
            return;
        }
        state.SetIterationTime(said[0].toDouble() / 1e6);
        memories[name].push_back(said[1].toLongLong());
    }
}

DashboardStatus SomeStatus()
{
    DashboardStatus status;
    status.server.isRead = true;
    status.server.httpServiceState = 4;
    status.server.qdfsService = ServiceStatus{.state = 4, .startMode = 2};
    status.server.settings.url = QStringLiteral("https://server.example/svn/");
    status.server.versions = {QStringLiteral("3.3.1"), QStringLiteral("1.14.2"), QStringLiteral("2.4.62")};
    status.server.repositoryCount = 100'000;
    for (std::size_t i = 0; i < kCommandLinkAddresses.size(); ++i)
        status.links.insert(static_cast<CommandLink>(i));
    return status;
}

QString ScriptOf(const DashboardStatus& status)
{
    CDashboardDocument document;
    ApplyTheme(document, QGuiApplication::palette(), QGuiApplication::font());
    RenderDashboard(document, status);
    return document.Script();
}

/// Runs a script in the page, and has the page settle its layout.
void RunInPage(benchmark::State& state, DashboardView& view, const std::function<QString()>& script)
{
    for (auto unused : state) {
        QEventLoop loop;
        view.Browser()->RunScript(script() + QStringLiteral(", String(document.body.offsetHeight)"),
                                  [&](const QString&) { loop.quit(); });
        loop.exec();
    }
}

void CheckPage(benchmark::State& state, const QString& fileName)
{
    for (auto unused : state) {
        if (QProcess::execute(QStringLiteral("tidy"), {QStringLiteral("-quiet"), QStringLiteral("-errors"), fileName}))
            state.SkipWithError("tidy failed");
    }
}

double MedianInMiB(std::vector<std::int64_t> kibibytes)
{
    if (kibibytes.empty())
        return 0;
    std::ranges::sort(kibibytes);
    return static_cast<double>(kibibytes[kibibytes.size() / 2]) / 1024;
}

int RunChild(char** argv, int argc)
{
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("quenvolta"));
    Child child(std::strtoll(argv[3], nullptr, 10));
    for (const auto& [name, open] : kChildren) {
        if (std::strcmp(argv[2], name) == 0)
            return (child.*open)();
    }
    return EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argc == 4 && std::strcmp(argv[1], "--child") == 0)
        return RunChild(argv, argc);

    QApplication application(argc, argv);
    // The children neither see nor change what the person who runs this has.
    const QTemporaryDir home;
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
        qputenv(name, home.path().toLocal8Bit());
    const BenchServer server;
    server.MakeRepositories(10);
    qputenv("QUENVOLTA_SERVER_DATA", QFileInfo(server.Repositories()).absolutePath().toLocal8Bit());

    const auto add = [](const char* name, auto&& function) {
        return benchmark::RegisterBenchmark(name, function)->Repetitions(kRepetitions)->ReportAggregatesOnly();
    };
    Memories memories;
    for (const auto& child : kChildren) {
        const char* const name = child.first;
        add(name, [&memories, name](benchmark::State& state) { Start(state, name, memories); })
            ->Unit(benchmark::kMillisecond)
            ->UseManualTime()
            ->Iterations(1);
    }

    PrintedMessages messages;
    std::optional<DashboardView> view;
    const DashboardStatus status = SomeStatus();
    const auto open = [&] {
        if (view)
            return;
        view.emplace(messages, &LoadWebBrowser);
        view->resize(700, 560);
        view->show();
        view->ShowStatus(status);
        view->Open(kDashboardResource);
        view->WaitUntilDrawn(std::chrono::seconds(60));
    };
    add("make_operations", [&](benchmark::State& state) {
        for (auto unused : state)
            benchmark::DoNotOptimize(ScriptOf(status));
    })->Unit(benchmark::kMicrosecond);
    add("empty_script",
        [&](benchmark::State& state) {
            open();
            RunInPage(state, *view, [] { return QStringLiteral("''"); });
        })
        ->Unit(benchmark::kMicrosecond)
        ->UseRealTime();
    add("render_status",
        [&](benchmark::State& state) {
            open();
            RunInPage(state, *view, [&] { return ScriptOf(status); });
        })
        ->Unit(benchmark::kMicrosecond)
        ->UseRealTime();

    QFile page(home.filePath(QStringLiteral("page.html")));
    page.open(QIODevice::WriteOnly);
    page.write(DashboardFile(QString::number(kDashboardResource)).toUtf8());
    page.close();
    add("tidy_page", [&](benchmark::State& state) { CheckPage(state, page.fileName()); })
        ->Unit(benchmark::kMicrosecond)
        ->UseRealTime();

    const int result = RunWithRatios(argc, argv,
                                     {{"usable_window", "bare_window"},
                                      {"drawn_dashboard", "bare_page"},
                                      {"drawn_dashboard", "usable_window"},
                                      {"make_operations", "tidy_page"},
                                      {"render_status", "tidy_page"},
                                      {"render_status", "empty_script"}});
    for (const auto& [name, kibibytes] : memories)
        std::printf("memory %s: %.1f MiB\n", name.c_str(), MedianInMiB(kibibytes));
    const auto ratio = [&](const char* first, const char* second) {
        std::printf("memory ratio %s / %s: %.2f\n", first, second,
                    MedianInMiB(memories[first]) / MedianInMiB(memories[second]));
    };
    ratio("usable_window", "bare_window");
    ratio("drawn_dashboard", "bare_page");
    ratio("drawn_dashboard", "usable_window");
    return result;
}
