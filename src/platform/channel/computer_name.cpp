#include "platform/channel/computer_name.h"

#include <QRegularExpression>
#include <QString>

#include <arpa/inet.h>
#include <netinet/in.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype kMaxNameLength = 255;

bool IsIpv6Address(const QString& text)
{
    in6_addr address{};
    return ::inet_pton(AF_INET6, text.toLatin1().constData(), &address) == 1;
}

} // namespace

QString ComputerName::Key() const
{
    return IsLocal() ? QString{} : user + u'@' + host.toLower() + u':' + QString::number(port);
}

std::optional<ComputerName> ParseComputerName(QStringView typed)
{
    // What isn't listed here never gets near ssh: it reads "-" as the beginning of an option, and expands "%" and,
    // through a shell, much else.
    static const QRegularExpression kPattern(
        uR"(\A(?:(?<user>[A-Za-z0-9_][A-Za-z0-9_.-]{0,63})@)?)"
        uR"((?:\[(?<ipv6>[0-9A-Fa-f:.]{2,45})\]|)"
        uR"((?<host>(?!-)[A-Za-z0-9_-]{1,63}(?<!-)(?:\.(?!-)[A-Za-z0-9_-]{1,63}(?<!-))*))(?::(?<port>[0-9]{1,5}))?\z)"_s);
    if (typed.isEmpty() || typed == "."_L1)
        return ComputerName{};
    if (typed.size() > kMaxNameLength)
        return std::nullopt;
    const QRegularExpressionMatch match = kPattern.match(typed);
    if (!match.hasMatch())
        return std::nullopt;
    ComputerName name{match.captured(u"host"), match.captured(u"user"), 0};
    if (const QString address = match.captured(u"ipv6"); !address.isEmpty()) {
        if (!IsIpv6Address(address))
            return std::nullopt;
        name.host = address;
    }
    if (const QString port = match.captured(u"port"); !port.isEmpty()) {
        bool valid = false;
        name.port = port.toUShort(&valid);
        if (!valid || name.port == 0)
            return std::nullopt;
    }
    return name;
}

} // namespace quenvolta
