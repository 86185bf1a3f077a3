#include "foundation/console_preferences.h"
#include "foundation/exception.h"
#include "foundation/registry_accessor.h"
#include "foundation/simple_exception.h"
#include "foundation/win32_exception.h"
#include "support/expect_failure.h"

#include <QFile>
#include <QTemporaryDir>

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::ExpectMessage;
using test::FailureOf;

namespace
{

class RegistryValuesTest : public ::testing::Test
{
protected:
    QTemporaryDir folder;
    Registry registry{u"HKEY_CURRENT_USER"_s, folder.filePath(u"registry.db"_s)};
};

TEST_F(RegistryValuesTest, RecentServersComeInTheOrderOfUse)
{
    ConsolePreferences preferences(registry);
    EXPECT_TRUE(preferences.GetRecentServers().isEmpty());
    preferences.AddRecentServer(u"srv1"_s, 1000);
    preferences.AddRecentServer(u"srv2"_s, 2000);
    preferences.AddRecentServer(u"SRV1"_s, 3000);
    registry.SetValue(u"Software\\Quenvolta\\Quenvolta Server\\RecentlyUsedServers"_s, u"other"_s,
                      RegistryValue::FromString(u"text"_s));
    EXPECT_EQ(preferences.GetRecentServers(), QStringList({u"srv1"_s, u"srv2"_s}));
}

TEST_F(RegistryValuesTest, RecentMastersStandOnceWhateverTheirCase)
{
    ConsolePreferences preferences(registry);
    preferences.AddRecentQdfsServer(u"master1"_s);
    preferences.AddRecentQdfsServer(u"other"_s);
    preferences.AddRecentQdfsServer(u"MASTER1"_s);
    EXPECT_EQ(preferences.GetRecentQdfsServers(), QStringList({u"MASTER1"_s, u"other"_s}));
    EXPECT_FALSE(preferences.IsUpdateCheckDisabled());
    registry.SetValue(u"Software\\Quenvolta\\Quenvolta Server"_s, u"DisableUpdateCheck"_s, RegistryValue::FromDword(2));
    EXPECT_TRUE(preferences.IsUpdateCheckDisabled());
}

TEST_F(RegistryValuesTest, TheServersValuesHaveTheirOwnReadings)
{
    const QString key = RegistryAccessor::kServerKey.toString();
    RegistryAccessor values(registry, key);
    EXPECT_TRUE(values.GetWindowsBasicEnabled());
    EXPECT_TRUE(values.GetRedirectFromLegacyWebInterface());
    EXPECT_EQ(values.GetServerPort(false), 0);
    EXPECT_EQ(values.GetWmiProviderLogLevel(), 1U);
    try {
        values.SetUseSsl(true);
        FAIL() << "a value was written below a key that doesn't exist";
    } catch (const Exception& failure) {
        EXPECT_TRUE(failure.GetMessage().startsWith(
            u"Cannot open registry key HKEY_CURRENT_USER\\SOFTWARE\\Quenvolta\\Quenvolta Server:\n"_s))
            << failure.GetMessage().toStdString();
    }
    ASSERT_EQ(registry.CreateKey(key), ERROR_SUCCESS);
    registry.SetValue(key, u"UseSSL"_s, RegistryValue::FromString(u"yes"_s));
    registry.SetValue(key, u"ServerPort"_s, RegistryValue::FromString(u"abc"_s));
    registry.SetValue(key, u"ServerBindings"_s, RegistryValue::FromString(u"plain"_s));
    EXPECT_TRUE(values.GetUseSsl());
    EXPECT_EQ(values.GetServerPort(false), 0);
    EXPECT_THROW(values.GetServerBindings(), Exception);
    values.SetWindowsBasicEnabled(false);
    values.SetRedirectFromLegacyWebInterface(false);
    values.SetServerPort(true, 8443);
    RegistryValue stored;
    registry.QueryValue(key, u"DisableWindowsBasic"_s, &stored);
    EXPECT_EQ(stored.ToString(), u"1"_s);
    registry.QueryValue(key, u"DisableRedirectionFromLegacyWebInterface"_s, &stored);
    EXPECT_EQ(stored.ToDword(), 1U);
    EXPECT_EQ(values.GetServerPort(true), 8443);
}

TEST_F(RegistryValuesTest, AValueIsSavedToAJournalAndComesBackAsItWas)
{
    const QString key = RegistryAccessor::kServerKey.toString();
    const QString name = u"QdfsAdminSD"_s;
    RegistryAccessor values(registry, key);
    QFile journal(folder.filePath(u"journal"_s));
    ASSERT_TRUE(journal.open(QIODevice::ReadWrite));

    // No key, so no value: one record says so, and restoring it changes nothing.
    values.SaveQdfsAdminSD(&journal);
    journal.seek(0);
    EXPECT_EQ(journal.readAll().toHex(), "02aa4412"
                                         "04000000"
                                         "00000000");
    journal.seek(0);
    values.RestoreQdfsAdminSD(&journal);
    EXPECT_EQ(registry.FindKey(key), ERROR_FILE_NOT_FOUND);

    // Several values one after another, of any type, also those that readers of the value don't expect.
    ASSERT_EQ(registry.CreateKey(key), ERROR_SUCCESS);
    const QList<RegistryValue> saved{RegistryValue::FromString(u"D:(A;;GA;;;BA)"_s),
                                     RegistryValue::FromDword(7),
                                     {RegistryType::Binary, {}},
                                     {static_cast<RegistryType>(2), QByteArray("\x00\xff", 2)}};
    journal.seek(0);
    for (const RegistryValue& value : saved) {
        registry.SetValue(key, name, value);
        values.SaveQdfsAdminSD(&journal);
    }
    values.SaveQdfsReplicationPartnersSID(&journal);
    values.SetQdfsAdminSD(u"D:(D;;GA;;;WD)"_s);
    values.SetQdfsReplicationPartnersSID(u"S-1-22-2-7"_s);
    journal.seek(0);
    for (const RegistryValue& value : saved) {
        values.RestoreQdfsAdminSD(&journal);
        RegistryValue now;
        EXPECT_EQ(registry.QueryValue(key, name, &now), ERROR_SUCCESS);
        EXPECT_EQ(now, value);
    }
    RegistryValue gone;
    for (int again = 0; again < 2; ++again) { // also where there is nothing to delete
        const qint64 place = journal.pos();
        values.RestoreQdfsReplicationPartnersSID(&journal);
        EXPECT_EQ(registry.QueryValue(key, u"QdfsReplicationPartnersSID"_s, &gone), ERROR_FILE_NOT_FOUND);
        journal.seek(place);
    }
}

TEST_F(RegistryValuesTest, WhatIsNoJournalChangesNothing)
{
    const QString key = RegistryAccessor::kServerKey.toString();
    RegistryAccessor values(registry, key);
    ASSERT_EQ(registry.CreateKey(key), ERROR_SUCCESS);
    values.SetQdfsAdminSD(u"as it is"_s);
    const auto restored = [&](const QByteArray& content) {
        QFile journal(folder.filePath(u"journal"_s));
        EXPECT_TRUE(journal.open(QIODevice::ReadWrite | QIODevice::Truncate));
        journal.write(QByteArray::fromHex(content));
        journal.seek(0);
        values.RestoreQdfsAdminSD(&journal);
    };
    const QString format = u"Invalid journal file format"_s;
    for (const char* wrong : {"04aa4412 04000000 00000000", "02aa4412 05000000 0000000000",
                              "02aa4412 04000000 01000000 02aa4412 04000000 01000000 02aa4412 00000000"})
        ExpectMessage<SimpleException>(format, [&] { restored(wrong); });
    for (const char* cut : {"", "02aa44", "02aa4412 04000000 0100", "02aa4412 04000000 01000000",
                            "02aa4412 04000000 01000000 02aa4412 04000000 01000000 04aa4412 ffffffff 00"}) {
        const auto failure = FailureOf<ComException>([&] { restored(cut); });
        ASSERT_TRUE(failure);
        EXPECT_EQ(failure->Code(), MakeHResult(0x80070026));
        EXPECT_TRUE(failure->GetMessage().startsWith(u"Cannot read journal file:\n"_s));
    }
    EXPECT_TRUE(FailureOf<Win32Exception>([&] { values.RestoreQdfsAdminSD(nullptr); }));
    QFile full(u"/dev/full"_s);
    ASSERT_TRUE(full.open(QIODevice::WriteOnly));
    for (QFileDevice* unfit : {static_cast<QFileDevice*>(&full), static_cast<QFileDevice*>(nullptr)}) {
        const auto failure = FailureOf<ComException>([&] { values.SaveQdfsAdminSD(unfit); });
        EXPECT_TRUE(failure && failure->GetMessage().startsWith(u"Cannot write journal file:\n"_s));
    }
    RegistryValue now;
    registry.QueryValue(key, u"QdfsAdminSD"_s, &now);
    EXPECT_EQ(now.ToString(), u"as it is"_s);
}

TEST_F(RegistryValuesTest, FailuresSayWhatCouldNotBeDone)
{
    const QString key = RegistryAccessor::kServerKey.toString();
    RegistryAccessor values(registry, key);
    ASSERT_EQ(registry.CreateKey(key), ERROR_SUCCESS);
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit nothing{0, limit.rlim_max};
    const auto before = std::signal(SIGXFSZ, SIG_IGN);
    ::setrlimit(RLIMIT_FSIZE, &nothing);
    const auto failure = FailureOf<Win32Exception>([&] { values.SetServerName(u"other"_s); });
    ::setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, before);
    EXPECT_TRUE(failure && failure->GetMessage().startsWith(u"Cannot write registry value:\n"_s));
    EXPECT_EQ(values.GetServerName(), QString());

    QFile damaged(folder.filePath(u"damaged.db"_s));
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly) && damaged.write(QByteArray(4096, 'x')) == 4096);
    damaged.close();
    Registry unreadable(u"HKEY_LOCAL_MACHINE"_s, damaged.fileName());
    const auto opening = FailureOf<Win32Exception>([&] { RegistryAccessor(unreadable, key).GetServerName(); });
    EXPECT_TRUE(opening && opening->GetMessage().startsWith(
                               u"Cannot open registry key HKEY_LOCAL_MACHINE\\SOFTWARE\\Quenvolta"_s));
}

} // namespace

} // namespace quenvolta
