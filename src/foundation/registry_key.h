#pragma once

#include "platform/registry/registry.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace quenvolta
{

/// Typed values of one registry key. Nothing is cached: every call reads or writes the registry. A missing key or
/// value reads as nothing; other failures are Win32Exceptions.
class RegistryKey
{
public:
    RegistryKey(Registry& registry, QString path);

    std::optional<RegistryValue> Read(const QString& name) const;
    std::optional<QString> ReadString(const QString& name) const;
    std::optional<std::uint32_t> ReadDword(const QString& name) const;
    /// SimpleException when the value is of another type than a list.
    std::optional<QStringList> ReadList(const QString& name) const;
    QList<NamedRegistryValue> ReadAll() const;

    /// The key must exist.
    void Write(const QString& name, const RegistryValue& value);
    bool Exists() const;
    /// Like Write, for callers who say in their own words why it failed; the result of setting the value.
    Win32Error Set(const QString& name, const RegistryValue& value);
    Win32Error Delete(const QString& name);
    void Create();

private:
    void RefuseOpening(Win32Error error) const;

    Registry& m_registry;
    QString m_path;
};

} // namespace quenvolta
