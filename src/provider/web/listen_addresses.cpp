#include "provider/web/listen_addresses.h"

#include "provider/provider_error.h"
#include "provider/server_account.h"
#include "provider/svn/repository_names.h"
#include "provider/unique_fd.h"
#include "provider/web/web_texts.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <net/if.h>
#include <netinet/in.h>
#include <optional>
#include <poll.h>
#include <sys/socket.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int kHighestPort = 65535;
constexpr auto kIpv4Loopback = "127.0.0.1"_L1;
constexpr auto kIpv6Loopback = "::1"_L1;
constexpr auto kEveryIpv4 = "0.0.0.0"_L1;
constexpr auto kEveryIpv6 = "::"_L1;

struct SocketAddress {
    sockaddr_storage storage{};
    socklen_t size = 0;
};

// An address in parts: "fe80::1%eth0" counts on the link of one interface only.
struct HostParts {
    QByteArray address;
    QByteArray scope; // the interface's name or number; empty for all other addresses
};

std::optional<HostParts> Split(const QString& host)
{
    const bool isPlain =
        std::all_of(host.cbegin(), host.cend(), [](QChar c) { return c > QChar(u' ') && c < QChar(u'\x7f'); });
    const QByteArray text = host.toLatin1();
    const qsizetype mark = text.indexOf('%');
    if (!isPlain)
        return std::nullopt;
    if (mark < 0)
        return HostParts{text, {}};
    const QByteArray scope = text.mid(mark + 1);
    const bool isName =
        !scope.isEmpty() && scope.size() < IF_NAMESIZE &&
        std::none_of(scope.cbegin(), scope.cend(), [](char c) { return QByteArrayView("%/[]\"'\\").contains(c); });
    return isName ? std::optional(HostParts{text.first(mark), scope}) : std::nullopt;
}

// The interface's number; 0 when there is none now.
unsigned InterfaceOf(const QByteArray& scope)
{
    const unsigned number = ::if_nametoindex(scope.constData());
    return number != 0 ? number : scope.toUInt();
}

std::optional<SocketAddress> ToSocketAddress(const QString& host, int port)
{
    const std::optional<HostParts> parts = Split(host);
    const in_port_t wirePort = htons(static_cast<std::uint16_t>(port));
    SocketAddress address;
    sockaddr_in ipv4{};
    sockaddr_in6 ipv6{};
    if (!parts)
        return std::nullopt;
    const char* text = parts->address.constData();
    if (parts->scope.isEmpty() && ::inet_pton(AF_INET, text, &ipv4.sin_addr) == 1) {
        ipv4.sin_family = AF_INET;
        ipv4.sin_port = wirePort;
        address.size = sizeof ipv4;
        std::memcpy(&address.storage, &ipv4, sizeof ipv4);
        return address;
    }
    if (::inet_pton(AF_INET6, text, &ipv6.sin6_addr) == 1 &&
        (parts->scope.isEmpty() || IN6_IS_ADDR_LINKLOCAL(&ipv6.sin6_addr))) {
        ipv6.sin6_family = AF_INET6;
        ipv6.sin6_port = wirePort;
        ipv6.sin6_scope_id = InterfaceOf(parts->scope);
        address.size = sizeof ipv6;
        std::memcpy(&address.storage, &ipv6, sizeof ipv6);
        return address;
    }
    return std::nullopt;
}

// The interface as it is named now, however it was given.
QString ScopeOf(const QString& host)
{
    const QByteArray scope = Split(host).value_or(HostParts{}).scope;
    std::array<char, IF_NAMESIZE> name{};
    if (scope.isEmpty())
        return {};
    return u'%' + QString::fromLatin1(::if_indextoname(InterfaceOf(scope), name.data()) ? name.data() : scope);
}

// One writing for each address, so that equal ones are seen to be.
QString Canonical(const SocketAddress& address)
{
    std::array<char, INET6_ADDRSTRLEN> text{};
    const int family = address.storage.ss_family;
    sockaddr_in ipv4{};
    sockaddr_in6 ipv6{};
    std::memcpy(&ipv4, &address.storage, sizeof ipv4);
    std::memcpy(&ipv6, &address.storage, sizeof ipv6);
    const void* bytes = &ipv6.sin6_addr;
    if (family == AF_INET)
        bytes = &ipv4.sin_addr;
    ::inet_ntop(family, bytes, text.data(), text.size());
    return QString::fromLatin1(text.data());
}

const sockaddr* Generic(const SocketAddress& address)
{
    return static_cast<const sockaddr*>(static_cast<const void*>(&address.storage));
}

sockaddr* Generic(SocketAddress& address)
{
    return static_cast<sockaddr*>(static_cast<void*>(&address.storage));
}

bool Contains(const QList<ListenAddress>& held, const ListenAddress& wanted)
{
    return std::any_of(held.cbegin(), held.cend(), [&wanted](const ListenAddress& each) {
        return each == wanted || (each.Port() == wanted.Port() && (each.IsEvery() || wanted.IsEvery()));
    });
}

bool IsMissingHere(int error)
{
    return error == EADDRNOTAVAIL || error == EAFNOSUPPORT;
}

} // namespace

ListenAddress::ListenAddress(const QString& host, int port)
    : m_host(host)
    , m_port(port)
{
    if (port < 1 || port > kHighestPort)
        throw ProviderError(WBEM_E_INVALID_PARAMETER, webtexts::kInvalidPort.arg(QString::number(port)));
    if (host.isEmpty())
        return;
    const std::optional<SocketAddress> address = ToSocketAddress(host, port);
    if (!address)
        throw ProviderError(WBEM_E_INVALID_PARAMETER, webtexts::kInvalidAddress.arg(RepositoryNames::Show(host)));
    m_host = Canonical(*address) + ScopeOf(host);
}

QString ListenAddress::Text() const
{
    QString port = QString::number(m_port);
    if (IsEvery())
        return port;
    return (m_host.contains(u':') ? u'[' + m_host + u']' : m_host) + u':' + port;
}

ListenAddress ListenAddress::FindFree()
{
    SocketAddress address = *ToSocketAddress(kIpv4Loopback, 0);
    const UniqueFd socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in bound{};
    if (::bind(socket.Get(), Generic(address), address.size) == 0 &&
        ::getsockname(socket.Get(), Generic(address), &address.size) == 0)
        std::memcpy(&bound, &address.storage, sizeof bound);
    return {kIpv4Loopback, ntohs(bound.sin_port)};
}

int ListenAddress::Probe() const
{
    if (!IsEvery())
        return TryBind(m_host, m_port);
    const int ipv6 = TryBind(kEveryIpv6, m_port);
    return ipv6 != 0 && !IsMissingHere(ipv6) ? ipv6 : TryBind(kEveryIpv4, m_port);
}

int ListenAddress::TryBind(const QString& host, int port)
{
    const SocketAddress address = *ToSocketAddress(host, port);
    const UniqueFd socket(::socket(address.storage.ss_family, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (!socket.IsOpen())
        return errno;
    constexpr int kOn = 1;
    // As httpd does it: connections that are just ending don't hinder.
    ::setsockopt(socket.Get(), SOL_SOCKET, SO_REUSEADDR, &kOn, sizeof kOn);
    if (address.storage.ss_family == AF_INET6)
        ::setsockopt(socket.Get(), IPPROTO_IPV6, IPV6_V6ONLY, &kOn, sizeof kOn);
    const ServerAccount::Elevation lowPorts;
    return ::bind(socket.Get(), Generic(address), address.size) == 0 ? 0 : errno;
}

bool ListenAddress::Answers() const
{
    constexpr int kLongestWaitMs = 500;
    QString host = m_host;
    if (IsEvery() || host == kEveryIpv4)
        host = kIpv4Loopback;
    if (host == kEveryIpv6)
        host = kIpv6Loopback;
    const SocketAddress address = *ToSocketAddress(host, m_port);
    const UniqueFd socket(::socket(address.storage.ss_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!socket.IsOpen())
        return false;
    if (::connect(socket.Get(), Generic(address), address.size) == 0)
        return true;
    if (errno != EINPROGRESS)
        return errno != ECONNREFUSED;
    pollfd ready{socket.Get(), POLLOUT, 0};
    if (::poll(&ready, 1, kLongestWaitMs) == 0)
        return true; // busy, but there
    int error = 0;
    socklen_t size = sizeof error;
    ::getsockopt(socket.Get(), SOL_SOCKET, SO_ERROR, &error, &size);
    return error != ECONNREFUSED;
}

QList<ListenAddress> ListenAddressesOf(const WebSettings& settings)
{
    if (settings.listenOnAll)
        return {ListenAddress(QString(), settings.port)};
    QList<ListenAddress> addresses;
    for (const QString& each : settings.addresses) {
        const ListenAddress address(each.trimmed().isEmpty() ? u"-"_s : each.trimmed(), settings.port);
        if (address.Host() == kEveryIpv6)
            return {ListenAddress(QString(), settings.port)}; // httpd takes IPv4 in by the same socket
        if (!addresses.contains(address))
            addresses.append(address);
    }
    const ListenAddress everyIpv4(kEveryIpv4, settings.port);
    const bool coversIpv4 = addresses.contains(everyIpv4);
    addresses.removeIf([&](const ListenAddress& each) {
        if (each.Host() == kIpv6Loopback && addresses.size() > 1)
            return IsMissingHere(each.Probe());
        return coversIpv4 && !each.Host().contains(u':') && each != everyIpv4;
    });
    return addresses;
}

void RequireFree(const QList<ListenAddress>& wanted, const QList<ListenAddress>& held)
{
    for (const ListenAddress& each : wanted) {
        if (Contains(held, each))
            continue;
        if (const int error = each.Probe(); error != 0)
            throw ProviderError(error == EACCES ? WBEM_E_ACCESS_DENIED : WBEM_E_FAILED,
                                webtexts::kCannotListen.arg(each.Text(), qt_error_string(error)),
                                error == EADDRINUSE ? webtexts::kPortInUse.arg(QString::number(each.Port()))
                                                    : QString());
    }
}

QByteArray ToLines(const QList<ListenAddress>& addresses)
{
    QByteArray lines;
    for (const ListenAddress& each : addresses)
        lines += each.Host().toLatin1() + ' ' + QByteArray::number(each.Port()) + '\n';
    return lines;
}

QList<ListenAddress> FromLines(const QByteArray& lines)
{
    QList<ListenAddress> addresses;
    for (const QByteArray& line : lines.split('\n')) {
        const qsizetype blank = line.indexOf(' ');
        if (blank < 0)
            continue;
        try {
            addresses.append({QString::fromLatin1(line.first(blank)), line.mid(blank + 1).toInt()});
        } catch (const ProviderError&) {
            continue; // written by something else
        }
    }
    return addresses;
}

} // namespace quenvolta
