#include "real_model.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>
#include <sched.h>

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

ChannelOptions LocalOptions(const RealServer& server, const QString& asVersion)
{
    ChannelOptions options;
    options.localProgram = RealServer::ProviderProgram();
    options.localArguments = server.ProviderArguments(asVersion).sliced(1);
    return options;
}

namespace
{

// The processes whose command lines begin with `program` and hold `words`.
QList<pid_t> ProcessesOf(const QByteArray& program, const QList<QByteArray>& words)
{
    QList<pid_t> found;
    for (const QString& name : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
        bool isNumber = false;
        const pid_t process = name.toInt(&isNumber);
        QFile commandLine(u"/proc/"_s + name + "/cmdline"_L1);
        if (!isNumber || !commandLine.open(QIODevice::ReadOnly))
            continue;
        const QByteArray arguments = commandLine.readAll();
        if (arguments.startsWith(program) &&
            std::ranges::all_of(words, [&](const QByteArray& word) { return arguments.contains(word); }))
            found.append(process);
    }
    return found;
}

} // namespace

QList<pid_t> ProvidersOf(const RealServer& server)
{
    return ProcessesOf(RealServer::ProviderProgram().toUtf8(), {server.DataFolder().toUtf8()});
}

QList<pid_t> ReplicationServicesOf(const RealServer& server)
{
    return ProcessesOf({}, {"--replication", server.DataFolder().toUtf8()});
}

void KillProviders(const RealServer& server)
{
    const QList<pid_t> providers = ProvidersOf(server);
    EXPECT_FALSE(providers.isEmpty());
    for (const pid_t process : providers)
        ::kill(process, SIGKILL);
    // A killed child stays as a zombie without a command line until the console takes note of it.
    QElapsedTimer waiting;
    waiting.start();
    while (!ProvidersOf(server).isEmpty() && waiting.elapsed() < 10'000)
        ::sched_yield();
    EXPECT_TRUE(ProvidersOf(server).isEmpty());
}

} // namespace quenvolta::test
