// 10,000 repositories listed through the model and the channel, beside a bare loop of the Subversion library that opens
// each and reads its youngest revision, and beside the stock tool run for each.
#include "bench_server.h"
#include "ratio_report.h"

#include <svn_cache_config.h>
#include <svn_fs.h>
#include <svn_pools.h>
#include <svn_repos.h>

using namespace quenvolta;
using namespace quenvolta::bench;

namespace
{

constexpr int kRepositories = 10'000;
constexpr int kRepetitions = 5;

void ListWithModel(benchmark::State& state, BenchServer& server)
{
    for (auto unused : state) {
        const auto repositories = server.Model().GetRepositories();
        if (repositories.size() != kRepositories)
            state.SkipWithError("the list is not whole");
    }
}

void ListWithLibrary(benchmark::State& state, const BenchServer& server)
{
    apr_pool_t* pool = svn_pool_create(nullptr);
    apr_pool_t* step = svn_pool_create(pool);
    for (auto unused : state) {
        for (int i = 0; i < kRepositories; ++i) {
            svn_pool_clear(step);
            const QByteArray path = (server.Repositories() + QStringLiteral("/r%1").arg(i)).toUtf8();
            svn_repos_t* repository = nullptr;
            svn_revnum_t youngest = -1;
            if (svn_repos_open3(&repository, path.constData(), nullptr, step, step) != nullptr ||
                svn_fs_youngest_rev(&youngest, svn_repos_fs(repository), step) != nullptr || youngest != 0)
                state.SkipWithError("a repository can't be read");
        }
    }
    svn_pool_destroy(pool);
}

void ListWithSvnlook(benchmark::State& state, const BenchServer& server)
{
    for (auto unused : state) {
        for (int i = 0; i < kRepositories; ++i) {
            QProcess process;
            process.start(QStringLiteral("svnlook"),
                          {QStringLiteral("youngest"), server.Repositories() + QStringLiteral("/r%1").arg(i)});
            process.waitForFinished(-1);
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    apr_initialize();
    svn_cache_config_t cache = *svn_cache_config_get();
    cache.cache_size = 64U * 1024 * 1024;
    svn_cache_config_set(&cache);
    BenchServer server;
    server.MakeRepositories(kRepositories);
    AddSingleRuns("model", kRepetitions, [&](benchmark::State& state) { ListWithModel(state, server); });
    AddSingleRuns("library", kRepetitions, [&](benchmark::State& state) { ListWithLibrary(state, server); });
    AddSingleRuns("svnlook", 2, [&](benchmark::State& state) { ListWithSvnlook(state, server); });
    return RunWithRatios(argc, argv, {{"model", "library"}, {"svnlook", "model"}});
}
