#include "real_server.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

#include <grp.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

namespace
{

const passwd* ServerAccount()
{
    return ::geteuid() == 0 ? ::getpwnam("www-data") : nullptr;
}

} // namespace

RealServer::RealServer()
{
    // As the provider would make it at first use, so that repositories can be there before it runs.
    EXPECT_TRUE(QDir().mkpath(RepositoriesFolder()));
    if (const passwd* account = ServerAccount()) {
        for (const QString& folder : {m_folder.path(), DataFolder(), RepositoriesFolder()}) {
            EXPECT_EQ(::chown(QFile::encodeName(folder).constData(), account->pw_uid, account->pw_gid), 0);
        }
    }
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

QStringList RealServer::ClientArguments(const QStringList& arguments) const
{
    return QStringList{u"--non-interactive"_s, u"--config-dir"_s, Scratch(u"svn-config"_s)} + arguments;
}

QString RealServer::Svn(const QStringList& arguments) const
{
    return Run(u"svn"_s, ClientArguments(arguments));
}

ToolOutcome RealServer::TrySvn(const QStringList& arguments) const
{
    return Try(u"svn"_s, ClientArguments(arguments));
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

ToolOutcome RealServer::Try(const QString& program, const QStringList& arguments)
{
    constexpr int kLongestWaitMs = 120'000;
    QProcess process;
    if (const passwd* account = ServerAccount()) {
        process.setChildProcessModifier([user = account->pw_uid, group = account->pw_gid] {
            if (::setgroups(0, nullptr) != 0 || ::setgid(group) != 0 || ::setuid(user) != 0)
                ::_exit(1);
        });
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(kLongestWaitMs)) << program.toStdString();
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

QString RealServer::Run(const QString& program, const QStringList& arguments)
{
    const ToolOutcome outcome = Try(program, arguments);
    EXPECT_EQ(outcome.exitCode, 0) << program.toStdString() << ": " << outcome.errors.toStdString();
    return outcome.output;
}

QStringList RealServer::HiddenFolders() const
{
    return QDir(RepositoriesFolder()).entryList({u".*"_s}, QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
}

bool RealServer::IsImporting() const
{
    const QString staging = HiddenFolders().value(0);
    return !staging.isEmpty() && QFile::exists(RepositoriesFolder() + u'/' + staging + "/repository/db/revs/0/20"_L1);
}

} // namespace quenvolta::test
