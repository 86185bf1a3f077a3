#include "ssh_server.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcessEnvironment>

#include <arpa/inet.h>
#include <csignal>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

namespace
{

constexpr auto kPrivilegeFolder = "/run/sshd";

// A port of the loopback that nobody uses now.
int FreePort()
{
    const int descriptor = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(::bind(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    socklen_t length = sizeof address;
    ::getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &length);
    ::close(descriptor);
    return ntohs(address.sin_port);
}

QByteArray ReadAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

SshServer::SshServer()
    : m_port(FreePort())
{
    MakeKey(u"hostkey"_s);
    MakeKey(u"userkey"_s);
    QDir(m_folder.path()).mkdir(u"bin"_s);
    WriteFile(u"authorized"_s, QString::fromLatin1(ReadAll(m_folder.filePath(u"userkey.pub"_s))));
    WriteFile(u"known"_s, u"testhost "_s + QString::fromLatin1(ReadAll(m_folder.filePath(u"hostkey.pub"_s))));
    WriteFile(u"noise"_s, QString());
    WriteFile(
        u"login"_s,
        u"#!/bin/sh\ncat '%1/noise'\nPATH='%1/bin':$PATH\nexport PATH\nexec /bin/sh -c \"$SSH_ORIGINAL_COMMAND\"\n"_s
            .arg(m_folder.path()),
        true);
    WriteFile(u"sshd_config"_s,
              u"Port %1\nListenAddress 127.0.0.1\nHostKey %2/hostkey\nAuthorizedKeysFile %2/authorized\n"
              "StrictModes no\nUsePAM no\nPasswordAuthentication no\nKbdInteractiveAuthentication no\n"
              "PermitRootLogin yes\nPidFile none\nForceCommand %2/login\n"_s.arg(m_port)
                  .arg(m_folder.path()));
    WriteFile(
        u"ssh_config"_s,
        u"Host testhost\n  HostName 127.0.0.1\n  Port %1\n  HostKeyAlias testhost\nHost *\n  IdentityFile %2/userkey\n"
        "  IdentitiesOnly yes\n  IdentityAgent none\n  UserKnownHostsFile %2/known\n  GlobalKnownHostsFile none\n"
        "  StrictHostKeyChecking yes\n  BatchMode yes\n"_s.arg(m_port)
            .arg(m_folder.path()));
    WriteFile(u"ssh"_s, u"#!/bin/sh\nexec ssh -F '%1/ssh_config' \"$@\"\n"_s.arg(m_folder.path()), true);
    Start();
}

SshServer::~SshServer()
{
    Stop();
}

void SshServer::Start()
{
    // The tests' set-up unpacks the server beside the build folders.
    const QString program =
        QDir(QCoreApplication::applicationDirPath()).absoluteFilePath(u"../../sshd/usr/sbin/sshd"_s);
    ASSERT_TRUE(QFileInfo(program).isExecutable()) << "tools/fetch-sshd unpacks " << program.toStdString();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (::geteuid() == 0) {
        // As root the server insists on an account and a folder that only its package's installation makes. The empty
        // folder stays until the machine restarts: other tests may be using it.
        QDir().mkpath(QLatin1StringView(kPrivilegeFolder));
        WriteFile(u"passwd"_s, QString::fromUtf8(ReadAll(u"/etc/passwd"_s)) +
                                   u"sshd:x:65534:65534::/run/sshd:/usr/sbin/nologin\n"_s);
        environment.insert(u"LD_PRELOAD"_s, u"libnss_wrapper.so"_s);
        environment.insert(u"NSS_WRAPPER_PASSWD"_s, m_folder.filePath(u"passwd"_s));
        environment.insert(u"NSS_WRAPPER_GROUP"_s, u"/etc/group"_s);
    }
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(program, {u"-D"_s, u"-e"_s, u"-f"_s, m_folder.filePath(u"sshd_config"_s)});
    QByteArray said;
    while (!said.contains("Server listening")) {
        ASSERT_TRUE(m_process.waitForReadyRead(20'000)) << said.toStdString();
        said += m_process.readAll();
    }
}

void SshServer::Stop()
{
    for (const qint64 id : std::exchange(m_frozen, {}))
        ::kill(static_cast<pid_t>(id), SIGCONT);
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished();
}

void SshServer::PutRemoteProgram(const QString& name, const QString& script) const
{
    WriteFile(u"bin/"_s + name, u"#!/bin/sh\n"_s + script + u'\n', true);
}

void SshServer::SetLoginNoise(const QString& lines) const
{
    WriteFile(u"noise"_s, lines);
}

void SshServer::ForgetKey() const
{
    WriteFile(u"authorized"_s, QString());
}

void SshServer::AllowPrompts() const
{
    QString config = QString::fromUtf8(ReadAll(m_folder.filePath(u"ssh_config"_s)));
    config.replace(u"StrictHostKeyChecking yes"_s, u"StrictHostKeyChecking ask"_s);
    config.replace(u"BatchMode yes"_s, u"BatchMode no\n  NumberOfPasswordPrompts 1"_s);
    WriteFile(u"ssh_config"_s, config);
    WriteFile(u"askpass"_s,
              u"#!/bin/sh\nprintf '%s\\n' \"$1\" >> '%1/prompts'\ncat '%1/answer'\n"_s.arg(m_folder.path()), true);
    SetAnswer({});
}

void SshServer::SetAnswer(const QString& answer) const
{
    WriteFile(u"answer"_s, answer + u'\n');
}

QString SshServer::Prompts() const
{
    return QString::fromUtf8(ReadAll(m_folder.filePath(u"prompts"_s)));
}

QString SshServer::HostFingerprint() const
{
    QProcess keygen;
    keygen.start(u"ssh-keygen"_s, {u"-l"_s, u"-f"_s, m_folder.filePath(u"hostkey.pub"_s)});
    EXPECT_TRUE(keygen.waitForFinished());
    return QString::fromUtf8(keygen.readAllStandardOutput()).section(u' ', 1, 1);
}

void SshServer::ForgetHost() const
{
    WriteFile(u"known"_s, QString());
}

void SshServer::ChangeKnownKey() const
{
    MakeKey(u"otherkey"_s);
    WriteFile(u"known"_s, u"testhost "_s + QString::fromLatin1(ReadAll(m_folder.filePath(u"otherkey.pub"_s))));
}

void SshServer::EncryptKey(const QString& passphrase) const
{
    ASSERT_EQ(QProcess::execute(u"ssh-keygen"_s, {u"-q"_s, u"-p"_s, u"-P"_s, QString(), u"-N"_s, passphrase, u"-f"_s,
                                                  m_folder.filePath(u"userkey"_s)}),
              0);
}

void SshServer::Freeze()
{
    // Each connection has processes of its own below the server's.
    QList<qint64> frozen{m_process.processId()};
    for (qsizetype i = 0; i < frozen.size(); ++i) {
        const QString id = QString::number(frozen[i]);
        const QByteArray children = ReadAll(u"/proc/%1/task/%1/children"_s.arg(id));
        for (const QByteArray& child : children.split(' ')) {
            if (!child.trimmed().isEmpty())
                frozen.append(child.trimmed().toLongLong());
        }
    }
    for (const qint64 id : frozen)
        ::kill(static_cast<pid_t>(id), SIGSTOP);
    m_frozen = frozen;
}

void SshServer::WriteFile(const QString& name, const QString& text, bool executable) const
{
    QFile file(m_folder.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(text.toUtf8());
    if (executable)
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void SshServer::MakeKey(const QString& name) const
{
    ASSERT_EQ(QProcess::execute(u"ssh-keygen"_s,
                                {u"-q"_s, u"-t"_s, u"ed25519"_s, u"-N"_s, QString(), u"-f"_s, m_folder.filePath(name)}),
              0);
}

} // namespace quenvolta::test
