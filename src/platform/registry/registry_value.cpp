#include "platform/registry/registry.h"

#include <QtEndian>

namespace quenvolta
{

namespace
{

void AppendText(QByteArray& data, const QString& text)
{
    for (const QChar character : text) {
        const quint16 unit = qToLittleEndian(static_cast<quint16>(character.unicode()));
        data.append(reinterpret_cast<const char*>(&unit), sizeof unit);
    }
    data.append(2, '\0');
}

QString ReadText(const QByteArray& data)
{
    QString text;
    text.reserve(data.size() / 2);
    for (qsizetype i = 0; i + 1 < data.size(); i += 2)
        text.append(QChar(qFromLittleEndian<quint16>(data.constData() + i)));
    return text;
}

template <typename Number>
RegistryValue FromNumber(RegistryType type, Number number)
{
    const Number stored = qToLittleEndian(number);
    return {type, QByteArray(reinterpret_cast<const char*>(&stored), sizeof stored)};
}

template <typename Number>
std::optional<Number> ToNumber(const RegistryValue& value, RegistryType type)
{
    if (value.type != type || value.data.size() != static_cast<qsizetype>(sizeof(Number)))
        return std::nullopt;
    return qFromLittleEndian<Number>(value.data.constData());
}

} // namespace

RegistryValue RegistryValue::FromString(const QString& text)
{
    RegistryValue value{RegistryType::String, {}};
    AppendText(value.data, text);
    return value;
}

RegistryValue RegistryValue::FromStringList(const QStringList& list)
{
    RegistryValue value{RegistryType::MultiString, {}};
    for (const QString& text : list)
        AppendText(value.data, text);
    value.data.append(2, '\0');
    return value;
}

RegistryValue RegistryValue::FromDword(std::uint32_t number)
{
    return FromNumber(RegistryType::Dword, number);
}

RegistryValue RegistryValue::FromQword(std::uint64_t number)
{
    return FromNumber(RegistryType::Qword, number);
}

std::optional<QString> RegistryValue::ToString() const
{
    if (type != RegistryType::String)
        return std::nullopt;
    const QString text = ReadText(data);
    const qsizetype end = text.indexOf(QChar(u'\0'));
    return end < 0 ? text : text.first(end);
}

std::optional<QStringList> RegistryValue::ToStringList() const
{
    if (type != RegistryType::MultiString)
        return std::nullopt;
    // An empty element ends the list, as the platform reads it.
    QStringList list;
    for (const QString& text : ReadText(data).split(QChar(u'\0'))) {
        if (text.isEmpty())
            break;
        list.append(text);
    }
    return list;
}

std::optional<std::uint32_t> RegistryValue::ToDword() const
{
    return ToNumber<std::uint32_t>(*this, RegistryType::Dword);
}

std::optional<std::uint64_t> RegistryValue::ToQword() const
{
    return ToNumber<std::uint64_t>(*this, RegistryType::Qword);
}

} // namespace quenvolta
