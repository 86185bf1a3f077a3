#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace quenvolta
{

/// The hosts that an ssh configuration names: "Host" without patterns, in their order. What it includes is for the
/// caller, who finds the patterns in `includes`.
QStringList HostsOfSshConfig(const QByteArray& config, QStringList* includes);

/// The hosts of a known_hosts file, as ComputerName understands them; hashed names can't be read and are left out.
QStringList HostsOfKnownHosts(const QByteArray& file);

/// The hosts that the person's own ssh files name, each once, in order. Files that can't be read are passed over.
QStringList KnownSshHosts(const QString& sshFolder);

/// The hosts in the output of "avahi-browse --resolve --parsable": their names, each once.
QStringList HostsOfAnnouncements(const QByteArray& output);

} // namespace quenvolta
