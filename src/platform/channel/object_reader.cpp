#include "platform/channel/object_reader.h"

#include "platform/channel/protocol.h"
#include "platform/channel/row_column.h"
#include "platform/wbem/wbem_object.h"

#include <QtEndian>

#include <limits>
#include <utility>

namespace quenvolta
{

namespace
{

template <typename Number>
Number TakeNumber(CborReader* in)
{
    return static_cast<Number>(in->TakeInteger(std::numeric_limits<Number>::min(), std::numeric_limits<Number>::max()));
}

bool IsCimType(CimType type)
{
    switch (type) {
    case CimType::Sint32:
    case CimType::String:
    case CimType::Boolean:
    case CimType::Object:
    case CimType::Uint32:
    case CimType::Datetime:
    case CimType::StringArray:
    case CimType::ObjectArray:
        return true;
    }
    return false;
}

template <typename Class>
WbemObjectPtr Make(ClassDefinitionPtr definition, QList<Variant> values)
{
    return std::make_shared<Class>(std::move(definition), std::move(values));
}

} // namespace

QStringList ObjectReader::Texts()
{
    const qsizetype count = m_in->EnterArray();
    QStringList texts;
    texts.reserve(count);
    for (qsizetype i = 0; i < count && m_in->Ok(); ++i)
        texts.append(m_in->TakeText());
    m_in->Leave();
    return texts;
}

QList<PropertyDefinition> ObjectReader::Properties()
{
    const qsizetype count = m_in->EnterArray();
    QList<PropertyDefinition> properties;
    properties.reserve(count);
    for (qsizetype i = 0; i < count && m_in->Ok(); ++i) {
        m_in->EnterArrayOf(3);
        PropertyDefinition property;
        property.name = m_in->TakeText();
        property.type = static_cast<CimType>(TakeNumber<std::uint16_t>(m_in));
        property.key = m_in->TakeBool();
        m_in->Leave();
        if (!IsCimType(property.type))
            m_in->Fail(ChannelText::OutOfRange);
        properties.append(std::move(property));
    }
    m_in->Leave();
    return properties;
}

void ObjectReader::ShapeFields(ClassDefinition* definition)
{
    definition->name = m_in->TakeText();
    definition->ancestors = Texts();
    definition->singleton = m_in->TakeBool();
    definition->properties = Properties();
}

ClassDefinitionPtr ObjectReader::Shape()
{
    const QByteArrayView rest = m_in->Rest();
    if (const ShapeCache::Entry* const known = m_shapes->Find(rest)) {
        m_in->Skip(known->items);
        return known->definition;
    }
    const qsizetype itemsBefore = m_in->Items();
    auto shape = std::make_shared<ClassDefinition>();
    m_in->EnterArrayOf(4);
    ShapeFields(shape.get());
    m_in->Leave();
    if (m_in->Ok()) {
        const qsizetype size = rest.size() - m_in->Rest().size();
        m_shapes->Keep({rest.first(size).toByteArray(), m_in->Items() - itemsBefore, shape});
    }
    return shape;
}

ClassDefinitionPtr ObjectReader::Signature()
{
    if (m_in->TakeNull())
        return nullptr;
    auto signature = std::make_shared<ClassDefinition>();
    signature->name = kParametersClass.toString();
    signature->properties = Properties();
    return signature;
}

ClassDefinitionPtr ObjectReader::Class()
{
    auto definition = std::make_shared<ClassDefinition>();
    m_in->EnterArrayOf(5);
    ShapeFields(definition.get());
    const qsizetype count = m_in->EnterArray();
    definition->methods.reserve(count);
    for (qsizetype i = 0; i < count && m_in->Ok(); ++i) {
        m_in->EnterArrayOf(4);
        MethodDefinition method;
        method.name = m_in->TakeText();
        method.isStatic = m_in->TakeBool();
        method.in = Signature();
        method.out = Signature();
        m_in->Leave();
        definition->methods.append(std::move(method));
    }
    m_in->Leave();
    m_in->Leave();
    return definition;
}

Variant ObjectReader::Value(CimType type)
{
    if (m_in->TakeNull() || !m_in->Ok())
        return {};
    switch (type) {
    case CimType::Sint32:
        return TakeNumber<std::int32_t>(m_in);
    case CimType::Uint32:
        return TakeNumber<std::uint32_t>(m_in);
    case CimType::Boolean:
        return m_in->TakeBool();
    case CimType::String:
    case CimType::Datetime:
        return m_in->TakeText();
    case CimType::Object:
        return Instance();
    case CimType::StringArray:
        return Texts();
    case CimType::ObjectArray: {
        const qsizetype count = m_in->EnterArray();
        QList<WbemObjectPtr> objects;
        objects.reserve(count);
        for (qsizetype i = 0; i < count && m_in->Ok(); ++i)
            objects.append(Instance());
        m_in->Leave();
        return objects;
    }
    }
    return {};
}

QList<Variant> ObjectReader::Values(const ClassDefinition& shape)
{
    const qsizetype length = shape.properties.size();
    QList<Variant> values;
    m_in->EnterArrayOf(length);
    if (m_in->Ok())
        values.reserve(length);
    for (qsizetype i = 0; i < length && m_in->Ok(); ++i)
        values.append(Value(shape.properties[i].type));
    m_in->Leave();
    return values;
}

void ObjectReader::Column(CimType type, qsizetype rows, Variant* values, qsizetype step)
{
    const qsizetype length = m_in->EnterArray();
    if (length == 2 && m_in->NextType() == QCborStreamReader::ByteArray && IsPackedType(type)) {
        ColumnOfTexts(rows, values, step);
        m_in->Leave();
        return;
    }
    if (length != rows && (length != 1 || rows == 0))
        m_in->Fail(ChannelText::WrongLength);
    for (qsizetype row = 0; row < length && m_in->Ok(); ++row)
        values[row * step] = Value(type);
    for (qsizetype row = length; row < rows && m_in->Ok(); ++row)
        values[row * step] = values[0];
    m_in->Leave();
}

// One text for all of them is read in a fraction of the time.
void ObjectReader::ColumnOfTexts(qsizetype rows, Variant* values, qsizetype step)
{
    const QByteArray lengths = m_in->TakeBytes(rows * kTextLengthSize);
    const QString texts = m_in->TakeText();
    const QChar* begin = texts.constData();
    const QChar* const end = begin + texts.size();
    for (qsizetype row = 0; row < rows && m_in->Ok(); ++row) {
        const qsizetype length = qFromBigEndian<std::uint32_t>(lengths.constData() + row * kTextLengthSize);
        if (length > end - begin)
            m_in->Fail(ChannelText::WrongLength);
        else if (length > 0 && begin->isLowSurrogate()) // half a character
            m_in->Fail(ChannelText::Malformed);
        else
            values[row * step] = QString(std::exchange(begin, begin + length), length);
    }
    if (begin != end)
        m_in->Fail(ChannelText::WrongLength);
}

QList<Variant> ObjectReader::Rows(const ClassDefinition& shape)
{
    const qsizetype length = shape.properties.size();
    if (length == 0)
        m_in->Fail(ChannelText::WrongLength);
    const qsizetype rows = m_in->TakeInteger(0, std::numeric_limits<std::int32_t>::max());
    // A column may be one item for all rows: what they come to is bound as if each had its own.
    if (rows * length > kMaxItems)
        m_in->Fail(ChannelText::TooManyItems);
    m_in->EnterArrayOf(length);
    QList<Variant> values(m_in->Ok() ? rows * length : 0);
    for (qsizetype i = 0; i < length && m_in->Ok(); ++i)
        Column(shape.properties[i].type, rows, values.data() + i, length);
    m_in->Leave();
    return m_in->Ok() ? values : QList<Variant>();
}

WbemObjectPtr ObjectReader::Object(MakeInstance makeInstance)
{
    const qsizetype length = m_in->EnterArray();
    const auto kind = static_cast<ObjectKind>(TakeNumber<std::uint8_t>(m_in));
    WbemObjectPtr object;
    if (kind == ObjectKind::Instance && length == 3) {
        const ClassDefinitionPtr shape = Shape();
        QList<Variant> values = m_in->Ok() ? Values(*shape) : QList<Variant>();
        if (m_in->Ok())
            object = makeInstance(shape, std::move(values));
    } else if (kind == ObjectKind::Class && length == 2) {
        ClassDefinitionPtr definition = Class();
        if (m_in->Ok())
            object = std::make_shared<WbemClassDefinitionObject>(std::move(definition));
    } else {
        m_in->Fail(ChannelText::UnknownKind);
    }
    m_in->Leave();
    return object;
}

WbemObjectPtr ObjectReader::Instance()
{
    return Object(&Make<WbemObject>);
}

WbemObjectPtr ObjectReader::OptionalObject()
{
    return m_in->TakeNull() ? nullptr : Instance();
}

WbemObjectPtr ObjectReader::ErrorObject()
{
    return Object(&Make<WbemErrorObject>);
}

} // namespace quenvolta
