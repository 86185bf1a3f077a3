#pragma once

#include "foundation/preferences.h"
#include "foundation/registry_key.h"

namespace quenvolta
{

/// The console's preferences in the registry of the person who runs it.
class ConsolePreferences final : public IcPreferences
{
public:
    /// The registry must outlive this.
    explicit ConsolePreferences(Registry& currentUser);

    /// Where the current user's registry is kept: $XDG_CONFIG_HOME/quenvolta/registry.db.
    static QString DefaultFileName();

    QStringList GetRecentServers() const override;
    void AddRecentServer(const QString& name, FileTime time) override;
    QStringList GetRecentQdfsServers() const override;
    void AddRecentQdfsServer(const QString& name) override;
    bool IsUpdateCheckDisabled() const override;
    void SetUpdateCheckDisabled(bool disabled) override;

private:
    RegistryKey m_key;
    RegistryKey m_recentServers;
};

} // namespace quenvolta
