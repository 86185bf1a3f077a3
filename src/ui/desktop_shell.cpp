#include "ui/desktop_shell.h"

#include "foundation/registry_accessor.h"
#include "foundation/server_data_path.h"
#include "foundation/simple_exception.h"
#include "platform/channel/computer_name.h"
#include "ui/string_table.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>
#include <QStandardPaths>

#include <array>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

struct Terminal {
    QStringView program;
    QStringView beforeCommand;
};

#define TERMINAL(program, beforeCommand)
#define LOG_VIEWER(program)
#define KEY_MANAGER(program)

#undef TERMINAL
#define TERMINAL(program, beforeCommand) Terminal{u"" program, u"" beforeCommand},
constexpr std::array kTerminals{
#include "resources/desktop_programs.def"
};
#undef TERMINAL
#define TERMINAL(program, beforeCommand)

#undef LOG_VIEWER
#define LOG_VIEWER(program) QStringView(u"" program),
constexpr std::array kLogViewers{
#include "resources/desktop_programs.def"
};
#undef LOG_VIEWER
#define LOG_VIEWER(program)

#undef KEY_MANAGER
#define KEY_MANAGER(program) QStringView(u"" program),
constexpr std::array kKeyManagers{
#include "resources/desktop_programs.def"
};
#undef KEY_MANAGER
#undef LOG_VIEWER
#undef TERMINAL

constexpr auto kEnvironmentFile = "qnvlvars.sh"_L1;
constexpr auto kErrorLog = "/web/logs/error.log"_L1;

/// Empty when none of the programs is installed.
template <typename Programs>
QString FindInstalled(const Programs& programs)
{
    for (const QStringView program : programs) {
        if (QString path = QStandardPaths::findExecutable(program.toString()); !path.isEmpty())
            return path;
    }
    return {};
}

void Start(const QString& program, const QStringList& arguments, const QString& workingDirectory = {})
{
    if (!QProcess::startDetached(program, arguments, workingDirectory))
        throw SimpleException::FromText(LoadString(StringId::kProgramNotStarted, program));
}

QString InstallationFolder()
{
    Registry localMachine(u"HKEY_LOCAL_MACHINE"_s, ServerDataPath() + "/registry.db"_L1);
    const QString registered = RegistryAccessor(localMachine, RegistryAccessor::kServerKey.toString()).GetInstallDir();
    return registered.isEmpty() ? QCoreApplication::applicationDirPath() : registered;
}

/// Shows the log of a remote computer's server through ssh.
QStringList RemoteLogCommand(const QString& computer)
{
    const std::optional<ComputerName> name = ParseComputerName(computer);
    if (!name)
        throw SimpleException::FromText(LoadString(StringId::kNoComputerName, computer));
    QStringList command{qEnvironmentVariable("QUENVOLTA_SSH", u"ssh"_s), u"-t"_s};
    if (!name->user.isEmpty())
        command += {u"-l"_s, name->user};
    if (name->port != 0)
        command += {u"-p"_s, QString::number(name->port)};
    const QString data = u"d=${QUENVOLTA_SERVER_DATA:-$HOME/.local/share/quenvolta-server}; "
                         "[ -d \"$d\" ] || d=/var/lib/quenvolta-server; "_s;
    return command + QStringList{u"--"_s, name->host, data + u"exec less +F \"$d%1\""_s.arg(kErrorLog)};
}

} // namespace

const CDesktopShell& CDesktopShell::Instance()
{
    static const CDesktopShell shell;
    return shell;
}

void CDesktopShell::OpenAddress(const QUrl& address) const
{
    if (!QDesktopServices::openUrl(address))
        throw SimpleException::FromText(LoadString(StringId::kAddressNotOpened, address.toDisplayString()));
}

void CDesktopShell::CopyText(const QString& text) const
{
    QGuiApplication::clipboard()->setText(text);
}

void CDesktopShell::StartCommandPrompt(const QString& workingDirectory) const
{
    const QString home = InstallationFolder();
    const QString variables = home + u'/' + kEnvironmentFile;
    if (!QFileInfo::exists(variables))
        throw SimpleException::FromText(LoadString(StringId::kNoEnvironmentFile, variables));
    const QString script = u"QUENVOLTA_HOME=$1; export QUENVOLTA_HOME; . \"$2\"; exec \"${SHELL:-/bin/sh}\""_s;
    StartInTerminal({u"/bin/sh"_s, u"-c"_s, script, u"sh"_s, home, variables}, workingDirectory);
}

void CDesktopShell::OpenEventViewer(const QString& computer) const
{
    if (!computer.isEmpty()) {
        StartInTerminal(RemoteLogCommand(computer), {});
        return;
    }
    if (const QString viewer = FindInstalled(kLogViewers); !viewer.isEmpty())
        Start(viewer, {});
    else
        StartInTerminal({u"less"_s, u"+F"_s, ServerDataPath() + kErrorLog}, {});
}

void CDesktopShell::OpenStoredCredentials() const
{
    if (const QString manager = FindInstalled(kKeyManagers); !manager.isEmpty())
        QProcess::startDetached(manager, {});
}

void CDesktopShell::StartInTerminal(const QStringList& command, const QString& workingDirectory)
{
    const QString folder = QFileInfo(workingDirectory).isDir() ? workingDirectory : QString();
    for (const Terminal& terminal : kTerminals) {
        const QString program = QStandardPaths::findExecutable(terminal.program.toString());
        if (program.isEmpty())
            continue;
        QStringList arguments;
        if (!terminal.beforeCommand.isEmpty())
            arguments.append(terminal.beforeCommand.toString());
        Start(program, arguments + command, folder);
        return;
    }
    throw SimpleException::FromText(LoadString(StringId::kNoTerminal));
}

} // namespace quenvolta
