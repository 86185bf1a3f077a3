#pragma once

#include "model/model.h"
#include "recording_subscriber.h"
#include "support/expect_failure.h"
#include "support/memory_preferences.h"
#include "support/stand_in_server.h"

#include <gtest/gtest.h>

namespace quenvolta::test
{

/// A model of a stand-in server, with a subscriber that writes to `log`.
class ModelTest : public testing::Test
{
protected:
    explicit ModelTest(const QString& version = QStringLiteral("3.3.1"))
        : server(version)
    {
        model.Subscribe(subscriber);
    }

    StandInServer server;
    MemoryPreferences preferences;
    QStringList log;
    RecordingSubscriber subscriber{log};
    CModel model{server.LocatorFactory(), preferences};
};

/// A model of a server of another version.
struct VersionedModel {
    explicit VersionedModel(const QString& version)
        : server(version)
    {
    }

    StandInServer server;
    MemoryPreferences preferences;
    CModel model{server.LocatorFactory(), preferences};
};

} // namespace quenvolta::test
