#include "provider/web/trial_run.h"

#include "provider/web/apache_command.h"
#include "provider/web/configuration_text.h"
#include "provider/web/error_log.h"

#include <QDeadlineTimer>
#include <QFile>

#include <csignal>
#include <sys/prctl.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int kLongestWaitMs = 30'000;
constexpr int kPauseMs = 10;

} // namespace

TrialRun::TrialRun(const QString& program, const QString& configuration, const WebFolder& folder)
{
    const QString pidFile = folder.RunFolder() + "/trial.pid"_L1;
    const QString log = folder.LogsFolder() + "/trial.log"_L1;
    QFile::remove(pidFile);
    QFile::remove(log);
    QProcess process;
    ApacheCommand::Prepare(process);
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); }); // it never outlives the provider
    process.start(program, {u"-X"_s, u"-f"_s, configuration, u"-c"_s, "PidFile "_L1 + ConfigurationText::Quote(pidFile),
                            u"-c"_s, "ErrorLog "_L1 + ConfigurationText::Quote(log)});
    const QDeadlineTimer deadline(kLongestWaitMs);
    // It writes its number once it has taken everything and is about to serve.
    while (!deadline.hasExpired() && !QFile::exists(pidFile) && !process.waitForFinished(kPauseMs) &&
           process.state() != QProcess::NotRunning)
        continue;
    m_succeeded = process.state() == QProcess::Running && QFile::exists(pidFile);
    process.terminate();
    if (process.state() != QProcess::NotRunning && !process.waitForFinished(kLongestWaitMs)) {
        process.kill();
        process.waitForFinished(kLongestWaitMs);
    }
    m_output = QString::fromUtf8(process.readAll()).trimmed();
    if (const QString lines = ErrorLog::Tail(log); !lines.isEmpty())
        m_output += (m_output.isEmpty() ? QString() : u"\n"_s) + lines;
    QFile::remove(pidFile);
    QFile::remove(log);
}

} // namespace quenvolta
