#include "host/command_line.h"
#include "host/console_program.h"
#include "host/display_check.h"
#include "host/registration_program.h"

#include <QApplication>
#include <QLoggingCategory>

#include <cstdio>
#include <cstdlib>
#include <optional>

using namespace quenvolta;

namespace
{

void NameProgram()
{
    QCoreApplication::setOrganizationName(QStringLiteral("quenvolta"));
    QCoreApplication::setApplicationName(QStringLiteral("quenvolta-manager"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QUENVOLTA_VERSION));
}

/// The command line must be known before there is an application with windows.
CommandLine ReadCommandLine(int& argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return ParseCommandLine(QCoreApplication::arguments());
}

int OpenConsole(const CommandLine& line, int& argc, char** argv)
{
    std::optional<DisplayCheck> check;
    if (line.task == CommandLine::Task::RenderPicture) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false")); // what this platform can't do
    } else {
        check.emplace();
    }
    const QApplication application(argc, argv);
    check.reset();
    return RunConsole(line);
}

} // namespace

int main(int argc, char** argv)
{
    NameProgram();
    const CommandLine line = ReadCommandLine(argc, argv);
    switch (line.task) {
    case CommandLine::Task::Print:
        std::printf("%s\n", qPrintable(line.text));
        return EXIT_SUCCESS;
    case CommandLine::Task::Refuse:
        std::fprintf(stderr, "%s\n", qPrintable(line.text));
        return EXIT_FAILURE;
    case CommandLine::Task::Register:
    case CommandLine::Task::Unregister:
        return ChangeRegistration(line.task == CommandLine::Task::Register, QString::fromLocal8Bit(argv[0]));
    case CommandLine::Task::OpenWindow:
    case CommandLine::Task::RenderPicture:
        break;
    }
    return OpenConsole(line, argc, argv);
}
