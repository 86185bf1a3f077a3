#include "foundation/format.h"

#include <QByteArray>

namespace quenvolta
{

namespace
{

struct Conversion {
    const QByteArray& modifiers;
    char letter;

    QString operator()(const QString& text) const { return text; }
    QString operator()(std::int64_t number) const { return Number("lld", static_cast<long long>(number)); }
    QString operator()(std::uint64_t number) const
    {
        const char specifier[] = {'l', 'l', letter, '\0'};
        return Number(specifier, static_cast<unsigned long long>(number));
    }

private:
    template <typename Integer>
    QString Number(const char* specifier, Integer number) const
    {
        const QByteArray format = '%' + modifiers + specifier;
        return QString::asprintf(format.constData(), number);
    }
};

} // namespace

QString FormatArguments(QStringView format, const QList<FormatArgument>& arguments)
{
    QString text;
    qsizetype next = 0;
    for (qsizetype i = 0; i < format.size(); ++i) {
        if (format[i] != u'%') {
            text += format[i];
            continue;
        }
        const qsizetype start = ++i;
        while (detail::IsFormatModifier(format[i].unicode()))
            ++i;
        if (format[i] == u'%') {
            text += u'%';
            continue;
        }
        const QByteArray modifiers = format.sliced(start, i - start).toLatin1();
        text += std::visit(Conversion{modifiers, format[i].toLatin1()}, arguments[next++]);
    }
    return text;
}

} // namespace quenvolta
