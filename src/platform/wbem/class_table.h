#pragma once

#include "platform/wbem/class_definition.h"

#include <QHash>
#include <QString>
#include <QStringList>

namespace quenvolta
{

/// A server's version as far as its classes depend on it.
struct TableVersion {
    int major = 0;
    int minor = 0;

    auto operator<=>(const TableVersion&) const = default;
};

/// The classes of one namespace as a server of one version has them, made from class_table.def.
class ClassTable
{
public:
    /// `namespaceName` is the part after `root\` ("Quenvolta", "CIMV2"), case doesn't matter; an unknown
    /// namespace makes an empty table.
    ClassTable(const QString& namespaceName, TableVersion version);

    /// The class, or null. Case doesn't matter.
    ClassDefinitionPtr Find(const QString& className) const;

    /// All class names, in the table's order.
    const QStringList& ClassNames() const { return m_names; }

    bool IsEmpty() const { return m_names.isEmpty(); }

private:
    QStringList m_names;
    QHash<QString, ClassDefinitionPtr> m_classes; // by lower-case name
};

} // namespace quenvolta
