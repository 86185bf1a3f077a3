#pragma once

#include "platform/wbem/class_definition.h"

#include <QList>
#include <QStringView>

namespace quenvolta
{

/// The values of one object being put together: properties by name, those that the class does not have in the
/// served version are left out.
class InstanceRow
{
public:
    explicit InstanceRow(ClassDefinitionPtr definition);

    /// Returns this, so that calls can follow each other.
    InstanceRow& Set(QStringView name, Variant value);

    const ClassDefinitionPtr& Definition() const { return m_definition; }
    const QList<Variant>& Values() const { return m_values; }
    WbemObjectPtr ToObject() const;

private:
    ClassDefinitionPtr m_definition;
    QList<Variant> m_values;
};

} // namespace quenvolta
