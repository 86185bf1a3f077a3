#include "ui/message_format.h"

#include <variant>

namespace quenvolta
{

namespace
{

QString TextOf(const FormatArgument& argument)
{
    return std::visit(
        [](const auto& value) {
            if constexpr (std::same_as<std::remove_cvref_t<decltype(value)>, QString>)
                return value;
            else
                return QString::number(value);
        },
        argument);
}

bool IsDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool IsKindCharacter(QChar c)
{
    return IsDigit(c) || (c >= u'a' && c <= u'z') || c == u'.' || c == u'-' || c == u'#';
}

/// The length of "!d!" and its like at the place, 0 when there is none.
qsizetype KindLength(QStringView text, qsizetype place)
{
    if (place >= text.size() || text[place] != u'!')
        return 0;
    qsizetype end = place + 1;
    while (end < text.size() && IsKindCharacter(text[end]))
        ++end;
    return end < text.size() && end > place + 1 && text[end] == u'!' ? end - place + 1 : 0;
}

} // namespace

QString FormatMessage(QStringView text, const QList<FormatArgument>& inserts)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size();) {
        if (text[i] == u'%' && i + 1 < text.size()) {
            if (text[i + 1] == u'%') {
                result += u'%';
                i += 2;
                continue;
            }
            qsizetype end = i + 1;
            while (end < text.size() && end < i + 3 && IsDigit(text[end]))
                ++end;
            const int number = text.sliced(i + 1, end - i - 1).toInt();
            if (number >= 1 && number <= inserts.size()) {
                result += TextOf(inserts[number - 1]);
                i = end + KindLength(text, end);
                continue;
            }
        }
        result += text[i++];
    }
    return result;
}

} // namespace quenvolta
