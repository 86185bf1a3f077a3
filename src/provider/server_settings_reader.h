#pragma once

#include "foundation/registry_accessor.h"

#include <QString>

namespace quenvolta
{

/// The server's settings as the rest of the provider asks for them. Failures to read are Exceptions.
class ServerSettingsReader
{
public:
    explicit ServerSettingsReader(Registry& registry);

    const RegistryAccessor& Values() const { return m_values; }

    /// True when an administrator gave the server a name of its own.
    bool UsesCustomName() const;
    /// That name, else this computer's.
    QString ServerName() const;
    /// Scheme, name and port, such as "http://srv1:8080".
    QString Origin() const;
    /// The address below which the repositories stand, with the slash at its end.
    QString RepositoriesUrl() const;
    /// ProviderError when it isn't an absolute path: whatever the current folder happens to be must never be taken for
    /// it.
    QString RepositoriesRoot() const;

private:
    RegistryAccessor m_values;
};

/// A name or path as it stands in an address; slashes stay.
QString EncodeForUrl(const QString& path);

} // namespace quenvolta
