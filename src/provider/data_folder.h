#pragma once

#include "platform/registry/registry.h"

#include <QString>

namespace quenvolta
{

/// Where the managed server keeps all that it has: its settings and, unless they say otherwise, its repositories.
class DataFolder
{
public:
    /// Uses `path`; makes the folder for the server's own account alone when it is missing, with settings that
    /// are safe to begin with: unprivileged ports on the loopback's addresses, nobody who may sign in. ProviderError
    /// when that fails. An existing folder's settings stay as they are.
    explicit DataFolder(const QString& path);

    /// $QUENVOLTA_SERVER_DATA, else ~/.local/share/quenvolta-server, else /var/lib/quenvolta-server for root.
    static QString DefaultPath();

    const QString& Path() const { return m_path; }
    /// The root HKEY_LOCAL_MACHINE of the server's settings.
    Registry& Settings() { return m_settings; }

private:
    void WriteFirstSettings();

    QString m_path;
    Registry m_settings;
};

} // namespace quenvolta
