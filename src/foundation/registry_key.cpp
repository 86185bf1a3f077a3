#include "foundation/registry_key.h"

#include "foundation/simple_exception.h"
#include "foundation/win32_exception.h"

#include <utility>

namespace quenvolta
{

RegistryKey::RegistryKey(Registry& registry, QString path)
    : m_registry(registry)
    , m_path(std::move(path))
{
}

std::optional<RegistryValue> RegistryKey::Read(const QString& name) const
{
    RegistryValue value;
    const Win32Error error = m_registry.QueryValue(m_path, name, &value);
    if (error == ERROR_FILE_NOT_FOUND)
        return std::nullopt;
    if (error == ERROR_SUCCESS)
        return value;
    Exists(); // says so when it can't even be opened
    throw Win32Exception(error, u"Cannot read configuration parameter '%s' from registry", name);
}

std::optional<QString> RegistryKey::ReadString(const QString& name) const
{
    const std::optional<RegistryValue> value = Read(name);
    return value ? value->ToString() : std::nullopt;
}

std::optional<std::uint32_t> RegistryKey::ReadDword(const QString& name) const
{
    const std::optional<RegistryValue> value = Read(name);
    return value ? value->ToDword() : std::nullopt;
}

std::optional<QStringList> RegistryKey::ReadList(const QString& name) const
{
    const std::optional<RegistryValue> value = Read(name);
    if (!value)
        return std::nullopt;
    std::optional<QStringList> list = value->ToStringList();
    if (!list)
        throw SimpleException(u"Data type of '%s' value is unexpected", name);
    return list;
}

QList<NamedRegistryValue> RegistryKey::ReadAll() const
{
    QList<NamedRegistryValue> values;
    const Win32Error error = m_registry.EnumerateValues(m_path, &values);
    if (error != ERROR_SUCCESS && error != ERROR_FILE_NOT_FOUND)
        throw Win32Exception(error, u"Cannot enumerate registry values");
    return values;
}

void RegistryKey::Write(const QString& name, const RegistryValue& value)
{
    if (const Win32Error error = Set(name, value); error != ERROR_SUCCESS)
        throw Win32Exception(error, u"Cannot set registry '%s' value", name);
}

bool RegistryKey::Exists() const
{
    const Win32Error error = m_registry.FindKey(m_path);
    if (error != ERROR_SUCCESS && error != ERROR_FILE_NOT_FOUND)
        RefuseOpening(error);
    return error == ERROR_SUCCESS;
}

Win32Error RegistryKey::Set(const QString& name, const RegistryValue& value)
{
    if (!Exists())
        RefuseOpening(ERROR_FILE_NOT_FOUND);
    return m_registry.SetValue(m_path, name, value);
}

Win32Error RegistryKey::Delete(const QString& name)
{
    return m_registry.DeleteValue(m_path, name);
}

void RegistryKey::Create()
{
    if (const Win32Error error = m_registry.CreateKey(m_path); error != ERROR_SUCCESS)
        throw Win32Exception(error, u"Cannot create registry key %s\\%s", m_registry.RootName(), m_path);
}

void RegistryKey::RefuseOpening(Win32Error error) const
{
    throw Win32Exception(error, u"Cannot open registry key %s\\%s", m_registry.RootName(), m_path);
}

} // namespace quenvolta
