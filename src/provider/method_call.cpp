#include "provider/method_call.h"

#include "provider/provider_error.h"
#include "provider/provider_texts.h"

#include <utility>

namespace quenvolta
{

MethodCall::MethodCall(const MethodDefinition& method, const QString& className, QHash<QString, QString> keys,
                       const WbemObject* in, CallContext& context)
    : m_method(method)
    , m_className(className)
    , m_keys(std::move(keys))
    , m_in(in)
    , m_context(context)
{
    if (!m_method.out)
        return;
    m_out.emplace(m_method.out);
    for (const PropertyDefinition& parameter : m_method.out->properties) {
        if (parameter.type == CimType::ObjectArray)
            m_out->Set(parameter.name, QList<WbemObjectPtr>{});
    }
}

void MethodCall::Return(QStringView name, Variant value)
{
    Q_ASSERT(m_out && m_out->Definition()->IndexOf(name) >= 0);
    m_out->Set(name, std::move(value));
}

void MethodCall::ReturnElement(const QString& name, const InstanceRow& row)
{
    Return(name, {}); // its elements go ahead of it
    m_context.rows.AddElement(name, row);
}

const Variant* MethodCall::Find(QStringView name) const
{
    const int index = m_in ? m_in->Definition()->IndexOf(name) : -1;
    return index < 0 ? nullptr : &m_in->Values()[index];
}

void MethodCall::RefuseMissing(QStringView name) const
{
    throw ProviderError(WBEM_E_INVALID_METHOD_PARAMETERS,
                        replies::kMissingParameter.arg(m_className, m_method.name, name.toString()));
}

} // namespace quenvolta
