#include "real_server.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

#include <gtest/gtest.h>

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

RealServer::RealServer()
{
    // As the provider would make it at first use, so that repositories can be there before it runs.
    EXPECT_TRUE(QDir().mkpath(RepositoriesFolder()));
}

QString RealServer::ProviderProgram()
{
    return QCoreApplication::applicationDirPath() + "/quenvolta-provider"_L1;
}

QStringList RealServer::ProviderArguments(const QString& asVersion) const
{
    QStringList arguments{u"--stdio"_s, u"--data"_s, DataFolder()};
    if (!asVersion.isEmpty())
        arguments << u"--as-version"_s << asVersion;
    return arguments;
}

void RealServer::MakeWithSvnadmin(const QString& name) const
{
    Run(u"svnadmin"_s, {u"create"_s, RepositoriesFolder() + u'/' + name});
}

void RealServer::Break(const QString& name) const
{
    QFile format(RepositoriesFolder() + u'/' + name + "/format"_L1);
    format.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    ASSERT_TRUE(format.open(QIODevice::WriteOnly | QIODevice::Truncate));
    format.write("no number\n");
}

QString RealServer::FileUrl(const QString& name) const
{
    return QUrl::fromLocalFile(RepositoriesFolder() + u'/' + name).toString(QUrl::FullyEncoded);
}

QString RealServer::Svn(const QStringList& arguments) const
{
    return Run(u"svn"_s, QStringList{u"--non-interactive"_s, u"--config-dir"_s, Scratch(u"svn-config"_s)} + arguments);
}

QString RealServer::Svnlook(const QStringList& arguments) const
{
    return Run(u"svnlook"_s, arguments);
}

void RealServer::Import(const QString& repository, const QStringList& files) const
{
    const QString folder = Scratch(u"import-"_s + repository);
    for (const QString& name : files) {
        const QString path = folder + u'/' + name;
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    }
    Svn({u"import"_s, u"-q"_s, u"-m"_s, u"import"_s, folder, FileUrl(repository)});
}

QString RealServer::Run(const QString& program, const QStringList& arguments)
{
    constexpr int kLongestWaitMs = 120'000;
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(kLongestWaitMs)) << program.toStdString();
    EXPECT_EQ(process.exitCode(), 0) << program.toStdString() << ": " << process.readAllStandardError().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

} // namespace quenvolta::test
