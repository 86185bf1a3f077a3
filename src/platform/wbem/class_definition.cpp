#include "platform/wbem/class_definition.h"

#include <algorithm>

namespace quenvolta
{

int ClassDefinition::IndexOf(QStringView propertyName) const
{
    // Callers nearly always spell a name as the class does, and the exact comparison is much the cheaper one.
    for (qsizetype i = 0; i < properties.size(); ++i) {
        if (properties[i].name == propertyName)
            return static_cast<int>(i);
    }
    for (qsizetype i = 0; i < properties.size(); ++i) {
        if (propertyName.compare(properties[i].name, Qt::CaseInsensitive) == 0)
            return static_cast<int>(i);
    }
    return -1;
}

const MethodDefinition* ClassDefinition::FindMethod(QStringView methodName) const
{
    const auto found = std::find_if(methods.cbegin(), methods.cend(), [&](const MethodDefinition& method) {
        return methodName.compare(method.name, Qt::CaseInsensitive) == 0;
    });
    return found == methods.cend() ? nullptr : &*found;
}

bool ClassDefinition::IsA(QStringView className) const
{
    return className.compare(name, Qt::CaseInsensitive) == 0 || ancestors.contains(className, Qt::CaseInsensitive);
}

QStringList ClassDefinition::Keys() const
{
    QStringList keys;
    for (const PropertyDefinition& property : properties) {
        if (property.key)
            keys.append(property.name);
    }
    return keys;
}

} // namespace quenvolta
