#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>

namespace quenvolta
{

/// How management providers are reached.
struct ChannelOptions {
    /// The provider for the local computer: a path, or a name to search in PATH.
    QString localProgram = QStringLiteral("quenvolta-provider");
    /// What it is given beside "--stdio".
    QStringList localArguments;
    /// Environment variables it gets beside this program's own.
    QMap<QString, QString> localEnvironment;

    QString sshProgram = QStringLiteral("ssh");
    /// What ssh is given before everything else, such as "-F" and a configuration file.
    QStringList sshArguments;
    QMap<QString, QString> sshEnvironment;
    /// The provider on a named computer.
    QString remoteProgram = QStringLiteral("quenvolta-provider");

    /// How long a provider may take to its first message.
    std::chrono::milliseconds localHelloTimeout = std::chrono::seconds(15);
    std::chrono::milliseconds remoteHelloTimeout = std::chrono::seconds(60);

    /// Asked several times a second while a named computer is being connected to; false gives it up. May run an event
    /// loop. Empty: nobody can give up.
    std::function<bool(const QString& computer)> isStillWanted;

    /// What this program tells the provider of itself.
    QMap<QString, QString> about;
};

} // namespace quenvolta
