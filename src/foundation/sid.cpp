#include "foundation/sid.h"

#include "foundation/win32_exception.h"

#include <QStringView>

#include <limits>
#include <optional>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype kMaximumSubAuthorities = 15;
constexpr std::uint64_t kMaximumAuthority = 0xFFFF'FFFF'FFFF;
// A larger authority is written in hexadecimal digits.
constexpr std::uint64_t kMaximumDecimalAuthority = 0xFFFF'FFFF;
constexpr qsizetype kHexadecimalAuthorityDigits = 12;

// The number that the whole text writes in its only form, without a sign or leading zeros.
std::optional<std::uint64_t> ReadDecimal(QStringView text, std::uint64_t maximum)
{
    if (text.isEmpty() || (text.size() > 1 && text.front() == u'0'))
        return std::nullopt;
    std::uint64_t number = 0;
    for (const QChar c : text) {
        if (c < u'0' || c > u'9')
            return std::nullopt;
        number = number * 10 + (c.unicode() - u'0');
        if (number > maximum)
            return std::nullopt;
    }
    return number;
}

std::optional<std::uint64_t> ReadAuthority(QStringView text)
{
    if (!text.startsWith("0x"_L1, Qt::CaseInsensitive))
        return ReadDecimal(text, kMaximumDecimalAuthority);
    const QStringView digits = text.sliced(2);
    if (digits.size() != kHexadecimalAuthorityDigits)
        return std::nullopt;
    bool read = false;
    const std::uint64_t number = digits.toULongLong(&read, 16);
    return read && number > kMaximumDecimalAuthority ? std::optional(number) : std::nullopt;
}

bool IsValid(const Sid& sid)
{
    return sid.authority <= kMaximumAuthority && !sid.subAuthorities.isEmpty() &&
           sid.subAuthorities.size() <= kMaximumSubAuthorities;
}

std::optional<Sid> ReadSid(const QString& text)
{
    const QList<QStringView> parts = QStringView(text).split(u'-');
    if (parts.size() < 4 || parts.size() > 3 + kMaximumSubAuthorities ||
        parts[0].compare(u'S', Qt::CaseInsensitive) != 0 || parts[1] != u"1")
        return std::nullopt;
    const std::optional<std::uint64_t> authority = ReadAuthority(parts[2]);
    if (!authority)
        return std::nullopt;
    Sid sid{*authority, {}};
    for (const QStringView part : parts.sliced(3)) {
        const std::optional<std::uint64_t> number = ReadDecimal(part, std::numeric_limits<std::uint32_t>::max());
        if (!number)
            return std::nullopt;
        sid.subAuthorities.append(static_cast<std::uint32_t>(*number));
    }
    return sid;
}

} // namespace

QString SidToString(const Sid& sid)
{
    if (!IsValid(sid))
        throw Win32Exception(ERROR_INVALID_SID, u"Cannot convert SID to string");
    QString text = u"S-1-"_s;
    text +=
        sid.authority <= kMaximumDecimalAuthority
            ? QString::number(sid.authority)
            : u"0x"_s + QString::number(sid.authority, 16).toUpper().rightJustified(kHexadecimalAuthorityDigits, u'0');
    for (const std::uint32_t number : sid.subAuthorities)
        text += u'-' + QString::number(number);
    return text;
}

Sid StringToSid(const QString& text)
{
    const std::optional<Sid> sid = ReadSid(text);
    if (!sid)
        throw Win32Exception(ERROR_INVALID_SID, u"Cannot parse SID string");
    return *sid;
}

} // namespace quenvolta
