#pragma once

#include <QList>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace quenvolta::test
{

/// A true ssh server on the loopback for the account that runs the test, with keys of its own. Nothing of the machine's
/// own ssh configuration is used or changed.
class SshServer
{
public:
    SshServer();
    ~SshServer();

    /// A program that behaves as ssh with a configuration that knows the host `testhost`; it can stand in for ssh.
    QString SshProgram() const { return m_folder.filePath(QStringLiteral("ssh")); }

    /// What the remote login finds first on its PATH: a program of this name and script.
    void PutRemoteProgram(const QString& name, const QString& script) const;
    /// Lines that the login shell prints before it runs the command.
    void SetLoginNoise(const QString& lines) const;
    /// The key that the client offers from now on is one that the server doesn't know.
    void ForgetKey() const;

    /// The client may ask: AskpassProgram() notes what it asks for and gives the answer that was set.
    void AllowPrompts() const;
    QString AskpassProgram() const { return m_folder.filePath(QStringLiteral("askpass")); }
    void SetAnswer(const QString& answer) const;
    /// All that was asked for so far.
    QString Prompts() const;
    QString HostFingerprint() const;

    /// The client no longer knows the server's key.
    void ForgetHost() const;
    /// The client knows another key of the server.
    void ChangeKnownKey() const;
    /// The client's key gets a passphrase.
    void EncryptKey(const QString& passphrase) const;
    /// Stops the server and its connections in their tracks, until the end of this.
    void Freeze();

    int Port() const { return m_port; }
    void Stop();

private:
    void WriteFile(const QString& name, const QString& text, bool executable = false) const;
    void MakeKey(const QString& name) const;
    void Start();

    QTemporaryDir m_folder;
    QProcess m_process;
    QList<qint64> m_frozen;
    int m_port = 0;
};

} // namespace quenvolta::test
