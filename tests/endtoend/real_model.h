#pragma once

#include "foundation/preferences.h"
#include "model/model.h"
#include "platform/channel/channel_pool.h"
#include "real_server.h"

#include <QStringList>

#include <memory>
#include <sys/types.h>

namespace quenvolta::test
{

/// Preferences that live as long as the test.
class KeptPreferences final : public IcPreferences
{
public:
    QStringList GetRecentServers() const override { return servers; }
    void AddRecentServer(const QString& name, FileTime) override { servers.prepend(name); }
    QStringList GetRecentQdfsServers() const override { return {}; }
    void AddRecentQdfsServer(const QString&) override {}
    bool IsUpdateCheckDisabled() const override { return true; }
    void SetUpdateCheckDisabled(bool) override {}

    QStringList servers;
};

/// A model on a true provider.
class RealModel
{
public:
    explicit RealModel(ChannelOptions options)
        : pool(std::make_shared<ChannelPool>(std::move(options)))
        , model(
              [this](WbemLocatorPtr* locator) {
                  *locator = pool->CreateLocator();
                  return S_OK;
              },
              preferences)
    {
    }

    KeptPreferences preferences;
    std::shared_ptr<ChannelPool> pool;
    CModel model;
};

/// Options for a provider that serves `server` as the local computer.
ChannelOptions LocalOptions(const RealServer& server, const QString& asVersion = {});

/// The processes whose program is the provider and that serve this data folder, found by their command lines.
QList<pid_t> ProvidersOf(const RealServer& server);

/// The processes of the service for distributed repositories of this data folder.
QList<pid_t> ReplicationServicesOf(const RealServer& server);

/// kill -9, and the end waited for.
void KillProviders(const RealServer& server);

} // namespace quenvolta::test
