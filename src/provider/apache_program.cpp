#include "provider/apache_program.h"

#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QStringList>

namespace quenvolta
{

using namespace Qt::StringLiterals;

QString ApacheProgram::Find()
{
    // Distributions keep it where an ordinary user's PATH doesn't look.
    const QStringList folders{u"/usr/sbin"_s, u"/usr/local/sbin"_s, u"/usr/local/apache2/bin"_s};
    for (const QString& name : {u"apache2"_s, u"httpd"_s}) {
        for (const QString& path :
             {QStandardPaths::findExecutable(name), QStandardPaths::findExecutable(name, folders)}) {
            if (!path.isEmpty())
                return path;
        }
    }
    return {};
}

QString ApacheProgram::ReadVersion()
{
    constexpr int kLongestWaitMs = 5000;
    const QString program = Find();
    if (program.isEmpty())
        return {};
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, {u"-v"_s});
    if (!process.waitForFinished(kLongestWaitMs)) {
        process.kill();
        process.waitForFinished(kLongestWaitMs);
        return {};
    }
    static const QRegularExpression kVersion(u"Apache/([0-9][0-9.]*)"_s);
    return kVersion.match(QString::fromLatin1(process.readAllStandardOutput())).captured(1);
}

} // namespace quenvolta
