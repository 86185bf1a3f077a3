#pragma once

#include "wmi/wmi_class_ref.h"
#include "wmi/wmi_connection.h"
#include "wmi/wmi_object.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <concepts>
#include <cstdint>
#include <type_traits>

namespace quenvolta
{

/// A call of a method that has input parameters, assembled from the method's own signature.
class ServerCall
{
public:
    /// The class is the one that declares the method.
    ServerCall(WMIConnection& connection, IcWMIClassRef& classRef, const QString& method);

    ServerCall& With(const QString& name, const QString& value);
    ServerCall& With(const QString& name, const QStringList& values);
    ServerCall& With(const QString& name, const QList<WMIObject>& values);

    ServerCall& With(const QString& name, std::same_as<bool> auto value)
    {
        m_in.PutBool(name, value);
        return *this;
    }
    ServerCall& With(const QString& name, std::same_as<std::int32_t> auto value)
    {
        m_in.PutInt32(name, value);
        return *this;
    }

    /// Makes the call on an instance's path, or on the class's name for a static method; gives the outputs.
    WMIObject Run(const QString& target) const;
    /// Makes the call for the elements of one of its outputs, each read by `read` while others are on their way.
    template <typename Read>
    auto RunForElements(const QString& target, const QString& parameter, const Read& read) const
    {
        QList<std::invoke_result_t<Read, const WMIObject&>> elements;
        m_connection.VisitElements(
            target, m_method, m_in, parameter, [&] { elements.clear(); },
            [&](const WMIObject& element) { elements.append(read(element)); });
        return elements;
    }
    /// The same as Run without waiting for the end: what the caller asks for the outcome. The context's value
    /// "ActivityId" lets the call be cancelled.
    WbemCallResultPtr Start(const QString& target, const WbemContextPtr& context) const;

private:
    WMIConnection& m_connection;
    QString m_method;
    WMIObject m_in;
};

} // namespace quenvolta
