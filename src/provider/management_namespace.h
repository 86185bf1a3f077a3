#pragma once

#include "platform/wbem/class_table.h"
#include "provider/management_class.h"

#include <QHash>
#include <QString>

#include <memory>

namespace quenvolta
{

/// One namespace of the server: finds the class that an object path or a name means, checks what was given against the
/// class table, and lets the class carry it out. Failures are ProviderErrors.
class ManagementNamespace
{
public:
    ManagementNamespace(const QString& name, TableVersion version);

    const QString& Name() const { return m_name; }
    const ClassTable& Classes() const { return m_table; }

    /// Gives a class of the table its implementation.
    void Add(const QString& className, const std::shared_ptr<ManagementClass>& implementation);

    /// True when a class carries the method out.
    bool HasHandler(const QString& className, const QString& method) const;

    /// The instance at an object path, or the class's definition when only a class is named.
    WbemObjectPtr GetObject(const QString& path, CallContext& context) const;

    void EnumerateInstances(const QString& className, CallContext& context) const;

    /// What the method does; Reads when the class doesn't carry it out.
    ManagementClass::Effect EffectOf(const QString& path, const QString& method) const;

    /// The output parameters, or null when the method has none.
    WbemObjectPtr ExecMethod(const QString& path, const QString& method, const WbemObjectPtr& in,
                             CallContext& context) const;

private:
    struct Target {
        ClassDefinitionPtr definition;
        ManagementClass* implementation = nullptr; ///< null for a class that is only carried as data
        bool isInstance = false;
        ManagementClass::Keys keys;
    };

    Target Resolve(const QString& path) const;
    ClassDefinitionPtr RequireClass(const QString& className) const;

    QString m_name;
    ClassTable m_table;
    QHash<QString, std::shared_ptr<ManagementClass>> m_implementations; // by the table's class name
};

} // namespace quenvolta
