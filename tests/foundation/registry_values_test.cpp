#include "foundation/console_preferences.h"
#include "foundation/exception.h"
#include "foundation/registry_accessor.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

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

} // namespace

} // namespace quenvolta
