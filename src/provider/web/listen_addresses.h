#pragma once

#include "provider/web/web_settings.h"

#include <QList>
#include <QString>

#include <compare>

struct sockaddr_storage;

namespace quenvolta
{

/// One address and port that the web service listens on.
class ListenAddress
{
public:
    /// An IPv4 or IPv6 address in its usual writing, a link-local one with its interface ("fe80::1%eth0"); an empty
    /// host is every address of the computer. ProviderError (WBEM_E_INVALID_PARAMETER) for anything else, and for a
    /// port outside 1 to 65535.
    ListenAddress(const QString& host, int port);

    /// One of the loopback that nobody uses at the moment.
    static ListenAddress FindFree();

    bool IsEvery() const { return m_host.isEmpty(); }
    const QString& Host() const { return m_host; }
    int Port() const { return m_port; }
    /// Such as "127.0.0.1:8080", "[::1]:8080", "[fe80::1%eth0]:8080", or "8080" for every address.
    QString Text() const;

    /// Whether it could be listened on now. Returns 0 or the system's error number.
    int Probe() const;
    /// True when somebody accepts connections there; false only when they are refused.
    bool Answers() const;

    bool operator==(const ListenAddress&) const = default;

private:
    static int TryBind(const QString& host, int port);

    QString m_host;
    int m_port;
};

/// The addresses that the settings ask for, those that another one covers left out. The IPv6 loopback, one of the
/// addresses that a new server begins with, is left out too where the system has no IPv6.
QList<ListenAddress> ListenAddressesOf(const WebSettings& settings);

/// Throws the ProviderError that tells what is in the way of listening on an address that isn't in `held`.
void RequireFree(const QList<ListenAddress>& wanted, const QList<ListenAddress>& held);

/// The lines that say what a service listens on, and back; lines that say nothing valid are passed over.
QByteArray ToLines(const QList<ListenAddress>& addresses);
QList<ListenAddress> FromLines(const QByteArray& lines);

} // namespace quenvolta
