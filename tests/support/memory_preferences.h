#pragma once

#include "foundation/preferences.h"

namespace quenvolta::test
{

/// Preferences that are forgotten.
class MemoryPreferences final : public IcPreferences
{
public:
    QStringList GetRecentServers() const override { return servers; }
    void AddRecentServer(const QString& name, FileTime time) override
    {
        servers.removeAll(name);
        servers.prepend(name);
        lastTime = time;
    }
    QStringList GetRecentQdfsServers() const override { return qdfsServers; }
    void AddRecentQdfsServer(const QString& name) override { qdfsServers.prepend(name); }
    bool IsUpdateCheckDisabled() const override { return updateCheckDisabled; }
    void SetUpdateCheckDisabled(bool disabled) override { updateCheckDisabled = disabled; }

    QStringList servers;
    QStringList qdfsServers;
    FileTime lastTime = 0;
    bool updateCheckDisabled = false;
};

} // namespace quenvolta::test
