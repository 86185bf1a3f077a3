#pragma once

#include "platform/wbem/class_definition.h"
#include "platform/wbem/error_info.h"
#include "platform/wbem/wbem_class_object.h"

#include <QList>

#include <span>

namespace quenvolta
{

/// An object held in memory: values in the order of its class's properties. A list of objects of one class
/// shares the definition.
class WbemObject : public IWbemClassObject
{
public:
    /// An instance with every property null.
    explicit WbemObject(ClassDefinitionPtr definition);
    /// An instance with its values; there must be one for every property.
    WbemObject(ClassDefinitionPtr definition, QList<Variant> values);
    /// One of many instances whose values stand one behind the other in `rows`, its own from `first` on. They share
    /// the list, which lives as long as one of them.
    WbemObject(ClassDefinitionPtr definition, QList<Variant> rows, qsizetype first);

    HRESULT Get(const QString& name, Variant* value, CimType* type) const override;
    const Variant* Find(const QString& name) const override;
    HRESULT Put(const QString& name, const Variant& value) override;
    HRESULT GetNames(QStringList* names) const override;
    HRESULT GetMethod(const QString& name, WbemObjectPtr* inSignature, WbemObjectPtr* outSignature) const override;
    HRESULT SpawnInstance(WbemObjectPtr* instance) const override;
    HRESULT InheritsFrom(const QString& ancestor) const override;

    const ClassDefinitionPtr& Definition() const { return m_definition; }
    /// Valid until the object changes.
    std::span<const Variant> Values() const
    {
        return {m_values.constData() + m_first, static_cast<std::size_t>(m_definition->properties.size())};
    }

private:
    ClassDefinitionPtr m_definition;
    QList<Variant> m_values; // with those of other objects, when there are more of them than properties
    qsizetype m_first = 0;
};

/// A class's definition as an object: its methods can be asked and instances spawned; its properties are null.
class WbemClassDefinitionObject final : public WbemObject
{
public:
    using WbemObject::WbemObject;
    HRESULT GetMethod(const QString& name, WbemObjectPtr* inSignature, WbemObjectPtr* outSignature) const override;
};

/// An extended error: an object that is error information as well. Its words are its property "Description".
class WbemErrorObject final : public WbemObject, public IErrorInfo
{
public:
    using WbemObject::WbemObject;
    HRESULT GetDescription(QString* description) const override;
};

/// Checks that `value` may stand in a property of `type` and brings numbers to the type's own alternative.
/// WBEM_E_TYPE_MISMATCH or WBEM_E_VALUE_OUT_OF_RANGE when it may not. Elements of arrays must not be null.
HRESULT CoerceVariant(CimType type, const Variant& value, Variant* coerced);

} // namespace quenvolta
