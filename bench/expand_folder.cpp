// A folder of 20,000 files in the window: from the click to the sorted nodes in the tree, beside the stock client that
// lists the same folder over file://.
#include "bench_server.h"
#include "host/console_window.h"
#include "ratio_report.h"
#include "snapin/mmc_extension_about.h"
#include "snapin/mmc_standalone_data.h"
#include "ui/messages.h"

#include <QApplication>
#include <QTest>
#include <QTreeView>

#include <memory>
#include <vector>

using namespace quenvolta;
using namespace quenvolta::bench;

namespace
{

constexpr int kEntries = 20'000;
constexpr int kRepetitions = 15;
constexpr int kSettledMs = 200;

// A failure ends the measurement.
class Messages final : public IcMessages
{
public:
    void ShowError(const Exception& exception) override
    {
        std::fprintf(stderr, "%s\n", qPrintable(exception.GetMessage()));
        std::exit(1);
    }
    MessageAnswer ShowText(MessageStyle, const QString&) override { return MessageAnswer::No; }
    int Ask(const TaskQuestion&) override { return 0; }
    MessageAnswer AskExplained(const ExplainedQuestion&) override { return MessageAnswer::No; }
};

TreePosition Folder()
{
    return {QStringLiteral("big"), QStringLiteral("/")};
}

// Whether the provider has read the folder before.
enum class Provider { New, Used };

// A connection to a provider, which others share as long as it is there.
std::unique_ptr<CModel> Connect(BenchServer& server, IcPreferences& preferences, Provider provider)
{
    auto model = std::make_unique<CModel>(server.Factory(), preferences);
    model->GetRepositories();
    if (provider == Provider::Used)
        model->GetChildren(Folder());
    return model;
}

void Expand(benchmark::State& state, BenchServer& server, Provider provider)
{
    for (auto unused : state) {
        state.PauseTiming();
        Messages messages;
        NoPreferences preferences;
        std::unique_ptr<CModel> connection = Connect(server, preferences, provider);
        const CMMCExtensionAbout about;
        auto window = std::make_unique<ConsoleWindow>(about, messages, nullptr);
        window->show();
        window->Load(std::make_unique<CMMCStandaloneData>(SnapInServices{server.Factory(), preferences, messages},
                                                          QStringList()));
        QTreeView& tree = *window->findChild<QTreeView*>(QStringLiteral("tree"));
        const QModelIndex root = tree.model()->index(0, 0);
        const QModelIndex repositories = tree.model()->index(0, 0, root);
        tree.expand(repositories);
        const QModelIndex repository = tree.model()->index(0, 0, repositories);
        QTest::qWait(kSettledMs); // what the window does once it is shown is no part of the click
        const QRect item = tree.visualRect(repository);
        const QPoint sign(item.left() - tree.indentation() / 2, item.center().y());
        state.ResumeTiming();
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, sign);
        QCoreApplication::processEvents();
        if (tree.model()->rowCount(repository) != kEntries ||
            tree.model()->index(9, 0, repository).data().toString() != QStringLiteral("file9"))
            state.SkipWithError("the tree is not whole");
        state.PauseTiming();
        window.reset(); // with its nodes and its provider: what a person doesn't wait for
        connection.reset();
        state.ResumeTiming();
    }
}

void ListWithModel(benchmark::State& state, BenchServer& server)
{
    for (auto unused : state) {
        state.PauseTiming();
        NoPreferences preferences;
        std::unique_ptr<CModel> model = Connect(server, preferences, Provider::New);
        state.ResumeTiming();
        if (model->GetChildren(Folder()).size() != kEntries)
            state.SkipWithError("the list is not whole");
        state.PauseTiming();
        model.reset();
        state.ResumeTiming();
    }
}

void ListWithClient(benchmark::State& state, const QString& url)
{
    for (auto unused : state) {
        QProcess process;
        process.start(QStringLiteral("svn"), {QStringLiteral("ls"), url});
        process.waitForFinished(-1);
        if (process.readAllStandardOutput().count('\n') != kEntries)
            state.SkipWithError("the list is not whole");
    }
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    BenchServer server;
    const QString url = server.MakeFolder(kEntries);
    AddSingleRuns("expand", kRepetitions, [&](benchmark::State& state) { Expand(state, server, Provider::New); });
    AddSingleRuns("expand_again", kRepetitions,
                  [&](benchmark::State& state) { Expand(state, server, Provider::Used); });
    AddSingleRuns("model", kRepetitions, [&](benchmark::State& state) { ListWithModel(state, server); });
    AddSingleRuns("svn_ls", kRepetitions, [&](benchmark::State& state) { ListWithClient(state, url); });
    // What else the machine has to do slows all of them down alike when they take turns.
    char takeTurns[] = "--benchmark_enable_random_interleaving=true";
    std::vector<char*> arguments(argv, argv + argc);
    arguments.insert(arguments.begin() + 1, takeTurns);
    return RunWithRatios(static_cast<int>(arguments.size()), arguments.data(),
                         {{"expand", "svn_ls"}, {"expand_again", "svn_ls"}, {"model", "svn_ls"}});
}
