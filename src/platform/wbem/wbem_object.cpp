#include "platform/wbem/wbem_object.h"

#include "platform/wbem/object_path.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

HRESULT CoerceNumber(CimType type, std::int64_t number, Variant* coerced)
{
    if (type == CimType::Sint32) {
        if (number > std::numeric_limits<std::int32_t>::max())
            return WBEM_E_VALUE_OUT_OF_RANGE;
        *coerced = static_cast<std::int32_t>(number);
        return S_OK;
    }
    if (type == CimType::Uint32) {
        if (number < 0)
            return WBEM_E_VALUE_OUT_OF_RANGE;
        *coerced = static_cast<std::uint32_t>(number);
        return S_OK;
    }
    return WBEM_E_TYPE_MISMATCH;
}

struct Coercion {
    CimType type;
    Variant* coerced;

    HRESULT Accept(bool fits, const Variant& value) const
    {
        if (!fits)
            return WBEM_E_TYPE_MISMATCH;
        *coerced = value;
        return S_OK;
    }

    HRESULT operator()(std::monostate) const { return Accept(true, Variant{}); }
    HRESULT operator()(bool value) const { return Accept(type == CimType::Boolean, value); }
    HRESULT operator()(std::int32_t value) const { return CoerceNumber(type, value, coerced); }
    HRESULT operator()(std::uint32_t value) const { return CoerceNumber(type, value, coerced); }
    HRESULT operator()(const QString& value) const
    {
        return Accept(type == CimType::String || type == CimType::Datetime, value);
    }
    HRESULT operator()(const WbemObjectPtr& value) const
    {
        return Accept(type == CimType::Object, value ? Variant{value} : Variant{});
    }
    HRESULT operator()(const QStringList& value) const { return Accept(type == CimType::StringArray, value); }
    HRESULT operator()(const QList<WbemObjectPtr>& value) const
    {
        const bool whole = std::all_of(value.cbegin(), value.cend(), [](const WbemObjectPtr& each) { return !!each; });
        return Accept(type == CimType::ObjectArray && whole, value);
    }
};

WbemObjectPtr MakeSignature(const ClassDefinitionPtr& definition)
{
    return definition ? std::make_shared<WbemClassDefinitionObject>(definition) : WbemObjectPtr{};
}

} // namespace

HRESULT CoerceVariant(CimType type, const Variant& value, Variant* coerced)
{
    return std::visit(Coercion{type, coerced}, value);
}

WbemObject::WbemObject(ClassDefinitionPtr definition)
    : m_definition(std::move(definition))
    , m_values(m_definition->properties.size())
{
}

WbemObject::WbemObject(ClassDefinitionPtr definition, QList<Variant> values)
    : m_definition(std::move(definition))
    , m_values(std::move(values))
{
    Q_ASSERT(m_values.size() == m_definition->properties.size());
}

WbemObject::WbemObject(ClassDefinitionPtr definition, QList<Variant> rows, qsizetype first)
    : m_definition(std::move(definition))
    , m_values(std::move(rows))
    , m_first(first)
{
    Q_ASSERT(m_first + m_definition->properties.size() <= m_values.size());
}

HRESULT WbemObject::Get(const QString& name, Variant* value, CimType* type) const
{
    const int index = m_definition->IndexOf(name);
    if (index >= 0) {
        *value = m_values[m_first + index];
        if (type)
            *type = m_definition->properties[index].type;
        return S_OK;
    }
    if (type)
        *type = CimType::String;
    if (name.compare("__CLASS"_L1, Qt::CaseInsensitive) == 0) {
        *value = m_definition->name;
        return S_OK;
    }
    if (name.compare("__RELPATH"_L1, Qt::CaseInsensitive) == 0) {
        const QString path = RelativePathOf(*this);
        *value = path.isEmpty() ? Variant{} : Variant{path};
        return S_OK;
    }
    return WBEM_E_NOT_FOUND;
}

const Variant* WbemObject::Find(const QString& name) const
{
    const int index = m_definition->IndexOf(name);
    return index < 0 ? nullptr : &m_values[m_first + index];
}

HRESULT WbemObject::Put(const QString& name, const Variant& value)
{
    const int index = m_definition->IndexOf(name);
    if (index < 0)
        return WBEM_E_NOT_FOUND;
    if (const qsizetype count = m_definition->properties.size(); m_values.size() != count) {
        m_values = m_values.sliced(m_first, count);
        m_first = 0;
    }
    return CoerceVariant(m_definition->properties[index].type, value, &m_values[index]);
}

HRESULT WbemObject::GetNames(QStringList* names) const
{
    names->clear();
    for (const PropertyDefinition& property : m_definition->properties)
        names->append(property.name);
    return S_OK;
}

HRESULT WbemObject::GetMethod(const QString&, WbemObjectPtr*, WbemObjectPtr*) const
{
    return WBEM_E_INVALID_OPERATION; // only a class's definition knows its methods
}

HRESULT WbemObject::SpawnInstance(WbemObjectPtr* instance) const
{
    *instance = std::make_shared<WbemObject>(m_definition);
    return S_OK;
}

HRESULT WbemObject::InheritsFrom(const QString& ancestor) const
{
    return m_definition->IsA(ancestor) ? S_OK : S_FALSE;
}

HRESULT WbemClassDefinitionObject::GetMethod(const QString& name, WbemObjectPtr* inSignature,
                                             WbemObjectPtr* outSignature) const
{
    const MethodDefinition* method = Definition()->FindMethod(name);
    if (!method)
        return WBEM_E_NOT_FOUND;
    if (inSignature)
        *inSignature = MakeSignature(method->in);
    if (outSignature)
        *outSignature = MakeSignature(method->out);
    return S_OK;
}

HRESULT WbemErrorObject::GetDescription(QString* description) const
{
    Variant value;
    const HRESULT code = Get(u"Description"_s, &value, nullptr);
    const QString* text = std::get_if<QString>(&value);
    *description = text ? *text : QString{};
    return code;
}

} // namespace quenvolta
