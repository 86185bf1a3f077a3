#include "foundation/exception.h"
#include "provider/activities/job_server.h"
#include "provider/data_folder.h"
#include "provider/provider_error.h"
#include "provider/provider_server.h"
#include "provider/provider_texts.h"
#include "provider/replication/service_process.h"
#include "provider/server_account.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <unistd.h>

using namespace quenvolta;
using namespace Qt::StringLiterals;

namespace
{

constexpr int kUsageError = 2;

int Fail(const QString& text, int status)
{
    std::fprintf(stderr, "%s\n", qPrintable(text));
    return status;
}

// One activity for the provider that started this process, or a console's whole session.
int Serve(const QCommandLineParser& options, bool asJob)
{
    const QString given = options.value(u"data"_s);
    const QString data = given.isEmpty() ? DataFolder::DefaultPath() : given;
    const QString versionText = options.value(u"as-version"_s);
    try {
        const ServerAccount account(data);
        if (options.isSet(u"replication"_s))
            return ServiceProcess::Serve(data);
        const ServedVersion version = versionText.isEmpty() ? ServedVersion() : ServedVersion(versionText);
        if (asJob)
            return JobServer(STDIN_FILENO, STDOUT_FILENO, data, version).Run();
        ProviderServer server(STDIN_FILENO, STDOUT_FILENO, {data, version});
        const int status = server.Run();
        return status == 0 ? 0 : Fail(replies::kUnknownOption.arg(server.Fault()), status);
    } catch (const Exception& failure) {
        return Fail(replies::kUnknownOption.arg(failure.GetMessage()), kUsageError);
    } catch (const ProviderError& error) {
        return Fail(replies::kUnknownOption.arg(error.Description()), kUsageError);
    }
}

} // namespace

int main(int argc, char** argv)
{
    // A console that is gone is noticed where it is written to.
    std::signal(SIGPIPE, SIG_IGN);
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(QUENVOLTA_VERSION));

    QCommandLineParser options;
    options.setApplicationDescription(replies::kHelpDescription.Whole());
    options.addHelpOption();
    options.addVersionOption();
    options.addOption({u"stdio"_s, replies::kHelpStdio.Whole()});
    options.addOption({u"as-version"_s, replies::kHelpAsVersion.Whole(), u"version"_s});
    options.addOption({u"data"_s, replies::kHelpData.Whole(), u"folder"_s});
    QCommandLineOption job(u"job"_s); // for the provider itself
    job.setFlags(QCommandLineOption::HiddenFromHelp);
    options.addOption(job);
    QCommandLineOption replication(u"replication"_s); // the same
    replication.setFlags(QCommandLineOption::HiddenFromHelp);
    options.addOption(replication);
    options.process(application);
    const bool asJob = options.isSet(job);
    const bool serves = asJob || options.isSet(replication) || options.isSet(u"stdio"_s);
    return serves ? Serve(options, asJob) : Fail(replies::kNoTerminal.Whole(), kUsageError);
}
