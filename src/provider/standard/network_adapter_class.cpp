#include "provider/standard/network_adapter_class.h"

#include "provider/provider_error.h"
#include "provider/standard/standard_texts.h"

#include <QMap>
#include <QStringList>

#include <array>
#include <cerrno>
#include <ifaddrs.h>
#include <memory>
#include <net/if.h>
#include <netdb.h>
#include <netinet/in.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

struct Adapter {
    QString name;
    QStringList addresses;
};

// The address as text; empty for what is no internet address. One that counts on its own link only carries the
// interface's name (fe80::1%eth0): without it nobody could listen there.
QString AddressText(const sockaddr* address)
{
    const bool ipv4 = address && address->sa_family == AF_INET;
    if (!ipv4 && !(address && address->sa_family == AF_INET6))
        return {};
    std::array<char, NI_MAXHOST> text{};
    const socklen_t size = ipv4 ? sizeof(sockaddr_in) : sizeof(sockaddr_in6);
    const int failure = ::getnameinfo(address, size, text.data(), text.size(), nullptr, 0, NI_NUMERICHOST);
    return failure == 0 ? QString::fromLatin1(text.data()) : QString();
}

// The interfaces by number.
QMap<unsigned, Adapter> ReadAdapters()
{
    ifaddrs* first = nullptr;
    if (::getifaddrs(&first) != 0)
        throw ProviderError(WBEM_E_FAILED, standardtexts::kCannotReadNetwork.arg(qt_error_string(errno)));
    const std::unique_ptr<ifaddrs, decltype([](ifaddrs* each) { ::freeifaddrs(each); })> owner(first);
    QMap<unsigned, Adapter> adapters;
    for (const ifaddrs* each = first; each; each = each->ifa_next) {
        const unsigned index = ::if_nametoindex(each->ifa_name);
        if (index == 0)
            continue; // an alias, or it has just gone
        Adapter& adapter = adapters[index];
        adapter.name = QString::fromLocal8Bit(each->ifa_name);
        const QString address = (each->ifa_flags & IFF_LOOPBACK) != 0 ? QString() : AddressText(each->ifa_addr);
        if (!address.isEmpty())
            adapter.addresses.append(address);
    }
    return adapters;
}

InstanceRow Row(const ClassDefinitionPtr& definition, unsigned index, const Adapter& adapter)
{
    InstanceRow row(definition);
    row.Set(u"Index", QString::number(index)).Set(u"Description", adapter.name);
    if (!adapter.addresses.isEmpty())
        row.Set(u"IPAddress", adapter.addresses);
    return row;
}

} // namespace

std::optional<InstanceRow> NetworkAdapterClass::Get(const ClassDefinitionPtr& definition, const Keys& keys,
                                                    CallContext&)
{
    const QMap<unsigned, Adapter> adapters = ReadAdapters();
    const auto found = adapters.constFind(keys.value(u"Index"_s).toUInt());
    return found == adapters.cend() ? std::nullopt : std::optional(Row(definition, found.key(), *found));
}

void NetworkAdapterClass::Enumerate(const ClassDefinitionPtr& definition, CallContext& context)
{
    const QMap<unsigned, Adapter> adapters = ReadAdapters();
    for (auto each = adapters.cbegin(); each != adapters.cend(); ++each)
        context.rows.AddInstance(Row(definition, each.key(), *each));
}

} // namespace quenvolta
