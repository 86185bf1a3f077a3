#include "provider/standard/known_hosts.h"

#include <QMap>
#include <QScopeGuard>
#include <QSysInfo>

#include <arpa/inet.h>
#include <cerrno>
#include <netdb.h>
#include <netinet/in.h>
#include <vector>

namespace quenvolta
{

namespace
{

constexpr std::size_t kFirstBuffer = 4096;
constexpr std::size_t kLargestBuffer = std::size_t{16} * 1024 * 1024;

// Known hosts by their names without regard to case; a later line adds what an earlier one lacks.
using Hosts = QMap<QString, DirectoryEntry>;

bool IsLoopback(const hostent& host)
{
    if (host.h_addrtype != AF_INET || host.h_addr_list[0] == nullptr)
        return host.h_addrtype == AF_INET6; // ::1 and the multicast addresses are what hosts files hold
    in_addr address{};
    std::copy_n(host.h_addr_list[0], sizeof address, static_cast<char*>(static_cast<void*>(&address)));
    return (ntohl(address.s_addr) >> 24) == IN_LOOPBACKNET;
}

void Add(Hosts& hosts, const QStringList& names)
{
    DirectoryEntry host{directorykinds::kHost.toString()};
    for (const QString& name : names) {
        QString& place = name.contains(u'.') ? host.dnsHostName : host.name;
        if (place.isEmpty())
            place = name;
    }
    if (host.name.isEmpty())
        host.name = host.dnsHostName.section(u'.', 0, 0);
    if (host.name.isEmpty())
        return;
    DirectoryEntry& known = hosts[host.name.toLower()];
    if (known.dnsHostName.isEmpty())
        known = host;
}

QStringList NamesOf(const hostent& host)
{
    QStringList names{QString::fromLocal8Bit(host.h_name)};
    for (char** alias = host.h_aliases; *alias != nullptr; ++alias)
        names.append(QString::fromLocal8Bit(*alias));
    return names;
}

} // namespace

QList<DirectoryEntry> ReadKnownHosts()
{
    Hosts hosts;
    ::sethostent(0);
    const auto end = qScopeGuard([] { ::endhostent(); });
    std::vector<char> buffer(kFirstBuffer);
    for (;;) {
        hostent entry{};
        hostent* found = nullptr;
        int hostError = 0;
        const int error = ::gethostent_r(&entry, buffer.data(), buffer.size(), &found, &hostError);
        if (found != nullptr) {
            if (!IsLoopback(*found))
                Add(hosts, NamesOf(*found));
        } else if (error == ERANGE && buffer.size() < kLargestBuffer) {
            buffer.resize(buffer.size() * 2);
        } else {
            break;
        }
    }
    Add(hosts, {QSysInfo::machineHostName()});
    return hosts.values();
}

} // namespace quenvolta
