#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <variant>

namespace quenvolta
{

/// One value of a formatted text.
using FormatArgument = std::variant<QString, std::int64_t, std::uint64_t>;

namespace detail
{

enum class FormatKind { Text, Signed, Unsigned };

template <typename Argument>
consteval FormatKind FormatKindOf()
{
    if constexpr (std::convertible_to<const Argument&, QString>) {
        return FormatKind::Text;
    } else {
        static_assert(std::integral<Argument> && !std::same_as<Argument, bool>,
                      "only texts and integers are formatted");
        return std::is_signed_v<Argument> ? FormatKind::Signed : FormatKind::Unsigned;
    }
}

template <typename Argument>
FormatArgument ToFormatArgument(const Argument& argument)
{
    if constexpr (std::convertible_to<const Argument&, QString>)
        return QString(argument);
    else if constexpr (std::is_signed_v<Argument>)
        return static_cast<std::int64_t>(argument);
    else
        return static_cast<std::uint64_t>(argument);
}

constexpr bool IsFormatModifier(char16_t c)
{
    return (c >= u'0' && c <= u'9') || c == u'.' || c == u'-' || c == u'#';
}

/// True when the conversions of the format are as many and of such kinds as the arguments.
constexpr bool FormatFits(QStringView format, const FormatKind* kinds, std::size_t count)
{
    std::size_t next = 0;
    for (qsizetype i = 0; i < format.size(); ++i) {
        if (format[i] != u'%')
            continue;
        ++i;
        while (i < format.size() && IsFormatModifier(format[i].unicode()))
            ++i;
        if (i == format.size())
            return false;
        const char16_t conversion = format[i].unicode();
        if (conversion == u'%')
            continue;
        const bool fits = next < count && (conversion == u's'   ? kinds[next] == FormatKind::Text
                                           : conversion == u'd' ? kinds[next] == FormatKind::Signed
                                           : conversion == u'u' || conversion == u'X' || conversion == u'x'
                                               ? kinds[next] == FormatKind::Unsigned
                                               : false);
        if (!fits)
            return false;
        ++next;
    }
    return next == count;
}

} // namespace detail

/// A printf-style format that is written in the program and checked against its arguments when the program is
/// compiled: %s for texts, %d for signed numbers, %u, %x and %X for unsigned ones. A text from outside can't be one.
template <typename... Arguments>
class BasicFormatString
{
public:
    template <std::size_t Size>
    consteval BasicFormatString(const char16_t (&format)[Size])
        : m_format(format, static_cast<qsizetype>(Size) - 1)
    {
        const std::array<detail::FormatKind, sizeof...(Arguments) + 1> kinds{
            detail::FormatKindOf<std::remove_cvref_t<Arguments>>()..., detail::FormatKind::Text};
        if (!detail::FormatFits(m_format, kinds.data(), sizeof...(Arguments)))
            throw "the format does not fit its arguments";
    }

    constexpr QStringView View() const { return m_format; }

private:
    QStringView m_format;
};

template <typename... Arguments>
using FormatString = BasicFormatString<std::type_identity_t<Arguments>...>;

/// Fills a format that was checked before. An argument's text is never read as a format.
QString FormatArguments(QStringView format, const QList<FormatArgument>& arguments);

/// The formatted text: Format(u"Cannot get property '%s'", name).
template <typename... Arguments>
QString Format(FormatString<Arguments...> format, const Arguments&... arguments)
{
    return FormatArguments(format.View(), {detail::ToFormatArgument(arguments)...});
}

} // namespace quenvolta
