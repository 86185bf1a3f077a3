#include "platform/channel/object_reader.h"

#include "platform/channel/protocol.h"
#include "platform/wbem/wbem_object.h"

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

void ObjectReader::Values(const ClassDefinition& shape, QList<Variant>* values)
{
    const qsizetype length = shape.properties.size();
    const bool isFirst = values->isEmpty();
    m_in->EnterArrayOf(length);
    for (qsizetype i = 0; i < length && m_in->Ok(); ++i) {
        if (!isFirst && m_in->TakeUndefined())
            values->append(Variant(values->at(values->size() - length)));
        else
            values->append(Value(shape.properties[i].type));
    }
    m_in->Leave();
}

QList<Variant> ObjectReader::Rows(const ClassDefinition& shape)
{
    const qsizetype length = shape.properties.size();
    const qsizetype count = m_in->EnterArrayOfArrays(length);
    QList<Variant> values;
    values.reserve(count * length);
    for (qsizetype i = 0; i < count && m_in->Ok(); ++i)
        Values(shape, &values);
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
        QList<Variant> values;
        if (m_in->Ok())
            Values(*shape, &values);
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
