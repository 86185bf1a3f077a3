#include "foundation/console_preferences.h"

#include <QStandardPaths>

#include <algorithm>
#include <utility>
#include <vector>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr auto kKey = "Software\\Quenvolta\\Quenvolta Server"_L1;
constexpr auto kRecentServersKey = "Software\\Quenvolta\\Quenvolta Server\\RecentlyUsedServers"_L1;

} // namespace

ConsolePreferences::ConsolePreferences(Registry& currentUser)
    : m_key(currentUser, kKey)
    , m_recentServers(currentUser, kRecentServersKey)
{
}

QString ConsolePreferences::DefaultFileName()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/quenvolta/registry.db"_L1;
}

QStringList ConsolePreferences::GetRecentServers() const
{
    std::vector<std::pair<std::uint64_t, QString>> servers;
    for (const NamedRegistryValue& each : m_recentServers.ReadAll()) {
        if (const std::optional<std::uint64_t> time = each.value.ToQword())
            servers.emplace_back(*time, each.name);
    }
    std::sort(servers.begin(), servers.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
    QStringList names;
    for (const auto& server : servers)
        names.append(server.second);
    return names;
}

void ConsolePreferences::AddRecentServer(const QString& name, FileTime time)
{
    m_recentServers.Create();
    m_recentServers.Write(name, RegistryValue::FromQword(static_cast<std::uint64_t>(time)));
}

QStringList ConsolePreferences::GetRecentQdfsServers() const
{
    return m_key.ReadList(u"RecentQdfsServers"_s).value_or(QStringList());
}

void ConsolePreferences::AddRecentQdfsServer(const QString& name)
{
    QStringList servers = GetRecentQdfsServers();
    servers.removeIf([&name](const QString& each) { return each.compare(name, Qt::CaseInsensitive) == 0; });
    servers.prepend(name);
    m_key.Create();
    m_key.Write(u"RecentQdfsServers"_s, RegistryValue::FromStringList(servers));
}

bool ConsolePreferences::IsUpdateCheckDisabled() const
{
    return m_key.ReadDword(u"DisableUpdateCheck"_s).value_or(0) != 0;
}

void ConsolePreferences::SetUpdateCheckDisabled(bool disabled)
{
    m_key.Create();
    m_key.Write(u"DisableUpdateCheck"_s, RegistryValue::FromDword(disabled ? 1 : 0));
}

} // namespace quenvolta
