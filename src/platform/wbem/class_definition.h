#pragma once

#include "platform/wbem/variant.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

namespace quenvolta
{

/// A property of a class or a parameter of a method.
struct PropertyDefinition {
    QString name;
    CimType type = CimType::String;
    bool key = false;

    bool operator==(const PropertyDefinition&) const = default;
};

struct ClassDefinition;
using ClassDefinitionPtr = std::shared_ptr<const ClassDefinition>;

/// A method of a class; `in` and `out` are null when it has no parameters of that direction.
struct MethodDefinition {
    QString name;
    bool isStatic = false;
    ClassDefinitionPtr in;
    ClassDefinitionPtr out;
};

/// A class, or the signature of a method (then named "__PARAMETERS").
struct ClassDefinition {
    QString name;
    /// From the direct parent up.
    QStringList ancestors;
    QList<PropertyDefinition> properties;
    QList<MethodDefinition> methods;
    bool singleton = false;

    /// The place of the property in `properties`, or -1. Case doesn't matter.
    int IndexOf(QStringView propertyName) const;
    /// The method, or null. Case doesn't matter.
    const MethodDefinition* FindMethod(QStringView methodName) const;
    /// True for this class's own name and for its ancestors'.
    bool IsA(QStringView className) const;
    /// The key properties, in order.
    QStringList Keys() const;
};

/// The name of a class that is a method's signature.
inline constexpr QStringView kParametersClass = u"__PARAMETERS";

} // namespace quenvolta
