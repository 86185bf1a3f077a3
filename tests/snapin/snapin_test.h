#pragma once

#include "fake_console.h"
#include "snapin/mmc_standalone_data.h"
#include "support/memory_preferences.h"
#include "support/qt_printers.h"
#include "support/recorded_messages.h"
#include "support/recorded_shell.h"
#include "support/stand_in_server.h"

#include <gtest/gtest.h>

namespace quenvolta::test
{

/// The snap-in on a stand-in server, in a console without a window.
struct LoadedSnapIn {
    explicit LoadedSnapIn(const QString& version = QStringLiteral("3.3.1"), const QStringList& commandLine = {})
        : server(version)
        , arguments(commandLine)
    {
    }

    SnapInServices Services() { return {server.LocatorFactory(), preferences, messages, shell, *dialogs}; }

    /// To be called once the server holds what it should.
    CMMCStandaloneData& Load()
    {
        data = std::make_unique<CMMCStandaloneData>(Services(), arguments);
        console.Load(*data);
        return *data;
    }

    StandInServer server;
    QStringList arguments;
    MemoryPreferences preferences;
    RecordedMessages messages;
    RecordedShell shell;
    const DialogTable* dialogs = &DialogTable::BuiltIn();
    std::unique_ptr<CMMCStandaloneData> data; // outlives the console's component
    FakeConsole console;
};

class SnapInTest : public testing::Test, protected LoadedSnapIn
{
};

} // namespace quenvolta::test
