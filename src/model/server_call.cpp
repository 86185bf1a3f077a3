#include "model/server_call.h"

#include "wmi/wmi_class.h"

namespace quenvolta
{

ServerCall::ServerCall(WMIConnection& connection, IcWMIClassRef& classRef, const QString& method)
    : m_connection(connection)
    , m_method(method)
    , m_in(classRef.GetClass().GetMethodParameters(method))
{
}

ServerCall& ServerCall::With(const QString& name, const QString& value)
{
    m_in.PutString(name, value);
    return *this;
}

ServerCall& ServerCall::With(const QString& name, const QStringList& values)
{
    m_in.PutStringArray(name, values);
    return *this;
}

ServerCall& ServerCall::With(const QString& name, const QList<WMIObject>& values)
{
    m_in.PutObjectArray(name, values);
    return *this;
}

WMIObject ServerCall::Run(const QString& target) const
{
    return m_connection.ExecMethod(target, m_method, m_in);
}

WbemCallResultPtr ServerCall::Start(const QString& target, const WbemContextPtr& context) const
{
    return m_connection.ExecMethodAsync(target, m_method, m_in, context);
}

} // namespace quenvolta
