#pragma once

#include "platform/wbem/class_definition.h"

#include <QList>
#include <QStringView>

#include <utility>

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

    /// A property's place for SetAt, or -1 when the class does not have it in the served version.
    int PlaceOf(QStringView name) const { return m_definition->IndexOf(name); }
    /// The same as Set for long lists, which look their properties up once.
    void SetAt(int place, Variant value)
    {
        if (place >= 0)
            m_values[place] = std::move(value);
    }
    /// Sets a text of two parts, in the memory of the text that the row held there.
    void SetTextAt(int place, const QString& begin, const QString& end);

    const ClassDefinitionPtr& Definition() const { return m_definition; }
    const QList<Variant>& Values() const { return m_values; }
    WbemObjectPtr ToObject() const;

private:
    ClassDefinitionPtr m_definition;
    QList<Variant> m_values;
};

} // namespace quenvolta
