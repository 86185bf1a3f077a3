#pragma once

#include "wmi/wmi_class_ref.h"
#include "wmi/wmi_connection.h"
#include "wmi/wmi_object.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>

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

    /// Makes the call on an instance's path, or on the class's name for a static method; gives the outputs.
    WMIObject Run(const QString& target) const;

private:
    WMIConnection& m_connection;
    QString m_method;
    WMIObject m_in;
};

} // namespace quenvolta
