#include "host/registration_program.h"

#include "foundation/exception.h"
#include "foundation/server_data_path.h"
#include "host/printed_messages.h"
#include "platform/registry/registry.h"
#include "snapin/registration.h"
#include "ui/guard.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cstdlib>
#include <sys/stat.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

QString ModulePath(const QString& program)
{
    const QString found = program.contains(u'/') ? program : QStandardPaths::findExecutable(program);
    return QFileInfo(found).absoluteFilePath();
}

/// The registry is in the folder of the server's data, which only its account may enter.
void MakeDataFolder(const QString& path)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    ::mkdir(QFile::encodeName(path).constData(), S_IRWXU);
}

} // namespace

int ChangeRegistration(bool registers, const QString& program)
{
    PrintedMessages messages;
    const bool isDone = Guarded(messages, [&] {
        const QString folder = ServerDataPath();
        MakeDataFolder(folder);
        Registry localMachine(u"HKEY_LOCAL_MACHINE"_s, folder + "/registry.db"_L1);
        if (registers)
            RegisterSnapIn(localMachine, ModulePath(program));
        else
            UnregisterSnapIn(localMachine);
    });
    return isDone ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace quenvolta
