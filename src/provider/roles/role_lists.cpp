#include "provider/roles/role_lists.h"

#include "foundation/registry_accessor.h"
#include "foundation/registry_changes.h"
#include "foundation/registry_key.h"
#include "foundation/win32_exception.h"

#include <array>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr auto kEnabled = "enabled"_L1;
constexpr auto kDisabled = "disabled"_L1;
constexpr std::array kRepositoryRoles{RepositoryRole::Managers, RepositoryRole::Replicators};

QString RolesKey()
{
    return RegistryAccessor::kServerKey.toString() + "\\Roles"_L1;
}

QString NameOf(ServerRole role)
{
    constexpr std::array kNames{"Administrators"_L1, "Supervisors"_L1, "ReplicationPartners"_L1};
    return kNames.at(static_cast<std::size_t>(role));
}

// Each repository is a value of its own there.
QString KeyOf(RepositoryRole role)
{
    constexpr std::array kNames{"\\Managers"_L1, "\\Replicators"_L1};
    return RolesKey() + kNames.at(static_cast<std::size_t>(role));
}

// The store takes "Project" and "project" for one name; two repositories may be called so.
QString ValueOf(const QString& repository)
{
    QString name;
    for (const char each : repository.toUtf8()) {
        const auto byte = static_cast<unsigned char>(each);
        if ((byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9'))
            name += QLatin1Char(each);
        else
            name += u'%' + QString::number(byte, 16).rightJustified(2, u'0');
    }
    return name;
}

// The switch stands before the accounts, in one value: they always change together.
QStringList ToList(const RepositoryRoleSettings& settings)
{
    return QStringList(settings.enabled ? kEnabled : kDisabled) + settings.accounts;
}

} // namespace

RoleLists::RoleLists(Registry& settings)
    : m_settings(settings)
{
}

QStringList RoleLists::Read(ServerRole role) const
{
    return RegistryKey(m_settings, RolesKey()).ReadList(NameOf(role)).value_or(QStringList());
}

void RoleLists::Write(ServerRole role, const QStringList& accounts)
{
    RegistryChanges changes(m_settings);
    Write(RolesKey(), NameOf(role), accounts);
    changes.Commit();
}

RepositoryRoleSettings RoleLists::Read(RepositoryRole role, const QString& repository) const
{
    QStringList list = RegistryKey(m_settings, KeyOf(role)).ReadList(ValueOf(repository)).value_or(QStringList());
    if (list.isEmpty())
        return {};
    const bool enabled = list.takeFirst() == kEnabled;
    return {enabled, list};
}

void RoleLists::Write(RepositoryRole role, const QString& repository, const RepositoryRoleSettings& settings)
{
    RegistryChanges changes(m_settings);
    Write(KeyOf(role), ValueOf(repository), ToList(settings));
    changes.Commit();
}

void RoleLists::Write(const QString& key, const QString& name, const QStringList& list)
{
    RegistryKey target(m_settings, key);
    target.Create();
    target.Write(name, RegistryValue::FromStringList(list));
}

void RoleLists::Forget(const QString& repository)
{
    for (const RepositoryRole role : kRepositoryRoles) {
        const Win32Error error = m_settings.DeleteValue(KeyOf(role), ValueOf(repository));
        if (error != ERROR_SUCCESS && error != ERROR_FILE_NOT_FOUND)
            throw Win32Exception(error, u"Cannot delete registry value");
    }
}

void RoleLists::Copy(const QString& from, const QString& to)
{
    RegistryChanges changes(m_settings);
    Forget(to);
    for (const RepositoryRole role : kRepositoryRoles) {
        if (const RepositoryRoleSettings settings = Read(role, from); settings != RepositoryRoleSettings())
            Write(KeyOf(role), ValueOf(to), ToList(settings));
    }
    changes.Commit();
}

} // namespace quenvolta
