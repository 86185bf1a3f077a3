#include "provider/web/apache_command.h"

#include "provider/server_account.h"
#include "provider/web/web_texts.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int kLongestRunMs = 30'000;
constexpr qsizetype kLongestOutput = 16 * 1024;

} // namespace

ApacheCommand::ApacheCommand(const QString& program, const QStringList& arguments)
    : m_program(program)
    , m_arguments(arguments)
{
}

void ApacheCommand::Prepare(QProcess& process)
{
    QProcessEnvironment environment;
    environment.insert(u"PATH"_s, u"/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin"_s);
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(u"/"_s);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setProcessChannelMode(QProcess::MergedChannels);
}

ApacheCommand::Outcome ApacheCommand::Run() const
{
    QProcess process;
    Prepare(process);
    if (m_lowPorts)
        process.setChildProcessModifier(&ServerAccount::AllowLowPorts);
    process.start(m_program, m_arguments);
    if (!process.waitForFinished(kLongestRunMs)) {
        const QString reason =
            process.error() == QProcess::Timedout ? webtexts::kTimedOut.Whole() : process.errorString();
        process.kill();
        process.waitForFinished(kLongestRunMs);
        return {false, reason};
    }
    return {process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
            QString::fromUtf8(process.readAll().left(kLongestOutput)).trimmed()};
}

} // namespace quenvolta
