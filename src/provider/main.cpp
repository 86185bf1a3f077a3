#include "foundation/exception.h"
#include "provider/data_folder.h"
#include "provider/provider_server.h"
#include "provider/provider_texts.h"

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

int Serve(const QCommandLineParser& options)
{
    const QString data = options.value(u"data"_s);
    const QString version = options.value(u"as-version"_s);
    try {
        ProviderServer server(STDIN_FILENO, STDOUT_FILENO,
                              {data.isEmpty() ? DataFolder::DefaultPath() : data,
                               version.isEmpty() ? ServedVersion() : ServedVersion(version)});
        const int status = server.Run();
        return status == 0 ? 0 : Fail(replies::kUnknownOption.arg(server.Fault()), status);
    } catch (const Exception& failure) {
        return Fail(replies::kUnknownOption.arg(failure.GetMessage()), kUsageError);
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
    options.process(application);
    return options.isSet(u"stdio"_s) ? Serve(options) : Fail(replies::kNoTerminal.Whole(), kUsageError);
}
