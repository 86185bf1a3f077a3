#include "provider/instance_row.h"

#include "platform/wbem/wbem_object.h"

#include <utility>

namespace quenvolta
{

InstanceRow::InstanceRow(ClassDefinitionPtr definition)
    : m_definition(std::move(definition))
    , m_values(m_definition->properties.size())
{
}

InstanceRow& InstanceRow::Set(QStringView name, Variant value)
{
    SetAt(PlaceOf(name), std::move(value));
    return *this;
}

void InstanceRow::SetTextAt(int place, const QString& begin, const QString& end)
{
    if (place < 0)
        return;
    Variant& value = m_values[place];
    if (!std::holds_alternative<QString>(value))
        value = QString();
    auto& text = std::get<QString>(value);
    text.resize(0);
    text.append(begin).append(end);
}

WbemObjectPtr InstanceRow::ToObject() const
{
    return std::make_shared<WbemObject>(m_definition, m_values);
}

} // namespace quenvolta
