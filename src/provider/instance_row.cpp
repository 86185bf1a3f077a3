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
    if (const int index = m_definition->IndexOf(name); index >= 0)
        m_values[index] = std::move(value);
    return *this;
}

WbemObjectPtr InstanceRow::ToObject() const
{
    return std::make_shared<WbemObject>(m_definition, m_values);
}

} // namespace quenvolta
