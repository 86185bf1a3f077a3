#include "platform/channel/object_writer.h"

#include "platform/channel/protocol.h"
#include "platform/wbem/wbem_object.h"

namespace quenvolta
{

void ObjectWriter::Texts(const QStringList& texts)
{
    m_out->EnterArray(texts.size());
    for (const QString& text : texts)
        m_out->Text(text);
    m_out->Leave();
}

void ObjectWriter::Properties(const ClassDefinition& definition)
{
    m_out->EnterArray(definition.properties.size());
    for (const PropertyDefinition& property : definition.properties) {
        m_out->EnterArray(3);
        m_out->Text(property.name);
        m_out->Integer(static_cast<std::uint16_t>(property.type));
        m_out->Bool(property.key);
        m_out->Leave();
    }
    m_out->Leave();
}

void ObjectWriter::ShapeFields(const ClassDefinition& definition)
{
    m_out->Text(definition.name);
    Texts(definition.ancestors);
    m_out->Bool(definition.singleton);
    Properties(definition);
}

void ObjectWriter::Shape(const ClassDefinition& definition)
{
    m_out->EnterArray(4);
    ShapeFields(definition);
    m_out->Leave();
}

void ObjectWriter::Class(const ClassDefinition& definition)
{
    const auto signature = [this](const ClassDefinitionPtr& parameters) {
        if (parameters)
            Properties(*parameters);
        else
            m_out->Null();
    };
    m_out->EnterArray(5);
    ShapeFields(definition);
    m_out->EnterArray(definition.methods.size());
    for (const MethodDefinition& method : definition.methods) {
        m_out->EnterArray(4);
        m_out->Text(method.name);
        m_out->Bool(method.isStatic);
        signature(method.in);
        signature(method.out);
        m_out->Leave();
    }
    m_out->Leave();
    m_out->Leave();
}

void ObjectWriter::Value(CimType type, const Variant& value)
{
    if (!m_out->Ok())
        return;
    if (IsNullVariant(value)) {
        m_out->Null();
        return;
    }
    // Writes the alternative that the type calls for; another one is a fault.
    const auto as = [&]<typename T>(const T* held, auto&& write) {
        if (held)
            write(*held);
        else
            m_out->Fail();
    };
    switch (type) {
    case CimType::Sint32:
        return as(std::get_if<std::int32_t>(&value), [this](std::int32_t number) { m_out->Integer(number); });
    case CimType::Uint32:
        return as(std::get_if<std::uint32_t>(&value), [this](std::uint32_t number) { m_out->Integer(number); });
    case CimType::Boolean:
        return as(std::get_if<bool>(&value), [this](bool flag) { m_out->Bool(flag); });
    case CimType::String:
    case CimType::Datetime:
        return as(std::get_if<QString>(&value), [this](const QString& text) { m_out->Text(text); });
    case CimType::Object:
        return as(std::get_if<WbemObjectPtr>(&value), [this](const WbemObjectPtr& object) { Object(object); });
    case CimType::StringArray:
        return as(std::get_if<QStringList>(&value), [this](const QStringList& texts) { Texts(texts); });
    case CimType::ObjectArray:
        return as(std::get_if<QList<WbemObjectPtr>>(&value), [this](const QList<WbemObjectPtr>& objects) {
            m_out->EnterArray(objects.size());
            for (const WbemObjectPtr& object : objects) {
                if (!object)
                    m_out->Fail();
                Object(object);
            }
            m_out->Leave();
        });
    }
    m_out->Fail();
}

void ObjectWriter::Values(const ClassDefinition& shape, std::span<const Variant> values)
{
    const auto length = static_cast<std::size_t>(shape.properties.size());
    if (values.size() != length) {
        m_out->Fail();
        return;
    }
    m_out->EnterArray(shape.properties.size());
    for (std::size_t i = 0; i < length; ++i)
        Value(shape.properties[static_cast<qsizetype>(i)].type, values[i]);
    m_out->Leave();
}

void ObjectWriter::Object(const WbemObjectPtr& object)
{
    if (!object) {
        m_out->Null();
        return;
    }
    const auto* const ours = dynamic_cast<const WbemObject*>(object.get());
    if (!ours || !m_out->Ok()) {
        m_out->Fail();
        return;
    }
    const ClassDefinition& definition = *ours->Definition();
    if (dynamic_cast<const WbemClassDefinitionObject*>(ours)) {
        m_out->EnterArray(2);
        m_out->Integer(static_cast<std::uint8_t>(ObjectKind::Class));
        Class(definition);
    } else {
        m_out->EnterArray(3);
        m_out->Integer(static_cast<std::uint8_t>(ObjectKind::Instance));
        Shape(definition);
        Values(definition, ours->Values());
    }
    m_out->Leave();
}

} // namespace quenvolta
