#include "foundation/server_data_path.h"

#include <QDir>

#include <unistd.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

QString ServerDataPath()
{
    if (const QString named = qEnvironmentVariable("QUENVOLTA_SERVER_DATA"); !named.isEmpty())
        return QDir::cleanPath(QDir::current().absoluteFilePath(named));
    if (::geteuid() == 0)
        return u"/var/lib/quenvolta-server"_s;
    return QDir::homePath() + "/.local/share/quenvolta-server"_L1;
}

} // namespace quenvolta
