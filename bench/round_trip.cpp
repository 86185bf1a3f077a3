// The round trip of a small call through the channel, beside a byte through a bare pipe to a child and back.
#include "bench_server.h"
#include "platform/wbem/wbem_services.h"
#include "ratio_report.h"

#include <array>
#include <sys/wait.h>
#include <unistd.h>

using namespace quenvolta;
using namespace quenvolta::bench;

namespace
{

constexpr int kRepetitions = 9;

// A child that gives every byte back.
class Echo
{
public:
    Echo()
    {
        std::array<int, 2> down{};
        std::array<int, 2> up{};
        if (::pipe(down.data()) != 0 || ::pipe(up.data()) != 0)
            std::exit(1);
        m_child = ::fork();
        if (m_child == 0) {
            ::close(down[1]);
            ::close(up[0]);
            char byte = 0;
            while (::read(down[0], &byte, 1) == 1 && ::write(up[1], &byte, 1) == 1) {
            }
            ::_exit(0);
        }
        ::close(down[0]);
        ::close(up[1]);
        m_write = down[1];
        m_read = up[0];
    }
    ~Echo()
    {
        ::close(m_write);
        ::waitpid(m_child, nullptr, 0);
    }
    Echo(const Echo&) = delete;
    Echo& operator=(const Echo&) = delete;

    bool RoundTrip() const
    {
        char byte = 'x';
        return ::write(m_write, &byte, 1) == 1 && ::read(m_read, &byte, 1) == 1;
    }

private:
    pid_t m_child = 0;
    int m_write = -1;
    int m_read = -1;
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const Echo echo;
    BenchServer server;
    WbemLocatorPtr locator;
    WbemServicesPtr services;
    server.Factory()(&locator);
    if (Failed(locator->ConnectServer(QStringLiteral("\\\\.\\root\\Quenvolta"), {}, {}, {}, 0, {}, nullptr, &services)))
        return 1;
    const auto add = [](const char* name, auto&& function) {
        benchmark::RegisterBenchmark(name, function)
            ->Unit(benchmark::kMicrosecond)
            ->UseRealTime()
            ->Repetitions(kRepetitions)
            ->ReportAggregatesOnly();
    };
    add("call", [&](benchmark::State& state) {
        const QString path = QStringLiteral("__SystemClass");
        for (auto unused : state) {
            WbemObjectPtr object;
            if (Failed(services->GetObject(path, 0, nullptr, &object)))
                state.SkipWithError("the call failed");
        }
    });
    add("pipe", [&](benchmark::State& state) {
        for (auto unused : state) {
            if (!echo.RoundTrip())
                state.SkipWithError("the pipe failed");
        }
    });
    return RunWithRatios(argc, argv, {{"call", "pipe"}});
}
