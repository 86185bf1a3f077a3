#pragma once

#include <QString>
#include <QStringList>

#include <benchmark/benchmark.h>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace quenvolta::bench
{

/// Prints what Google Benchmark measured, and then how many times as long the first of each pair took as the second,
/// by the medians of one run on one machine.
class RatioReporter final : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median")
                m_medians[run.run_name.function_name] = run.GetAdjustedRealTime();
        }
    }

    void PrintRatio(const std::string& first, const std::string& second) const
    {
        const auto a = m_medians.find(first);
        const auto b = m_medians.find(second);
        if (a != m_medians.end() && b != m_medians.end() && b->second > 0)
            std::printf("ratio %s / %s: %.2f\n", first.c_str(), second.c_str(), a->second / b->second);
    }

private:
    std::map<std::string, double> m_medians;
};

/// Registers a benchmark that is run once for each of its repetitions.
template <typename Function>
void AddSingleRuns(const char* name, int repetitions, Function&& function)
{
    benchmark::RegisterBenchmark(name, std::forward<Function>(function))
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime()
        ->Iterations(1)
        ->Repetitions(repetitions)
        ->ReportAggregatesOnly();
}

/// Runs the registered benchmarks and prints the ratios. Returns the program's status.
inline int RunWithRatios(int argc, char** argv, const std::vector<std::pair<std::string, std::string>>& pairs)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    for (const auto& [first, second] : pairs)
        reporter.PrintRatio(first, second);
    benchmark::Shutdown();
    return 0;
}

} // namespace quenvolta::bench
