#include "foundation/registry_accessor.h"

#include "foundation/registry_journal.h"
#include "foundation/win32_exception.h"

#include <cwchar>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr auto kAdmins = "QdfsAdminSD"_L1;
constexpr auto kReplicationPartners = "QdfsReplicationPartnersSID"_L1;

QString PortValue(bool secure)
{
    return secure ? u"SSLServerPort"_s : u"ServerPort"_s;
}

} // namespace

RegistryAccessor::RegistryAccessor(Registry& registry, const QString& keyPath)
    : m_key(registry, keyPath)
{
}

// A flag is a text; whatever isn't exactly "0" counts as set.
bool RegistryAccessor::ReadFlag(const QString& name) const
{
    return m_key.ReadString(name).value_or(u"0"_s) != "0"_L1;
}

std::uint32_t RegistryAccessor::ReadNumber(const QString& name, std::uint32_t fallback) const
{
    return m_key.ReadDword(name).value_or(fallback);
}

QString RegistryAccessor::ReadText(const QString& name) const
{
    return m_key.ReadString(name).value_or(QString());
}

void RegistryAccessor::WriteFlag(const QString& name, bool value)
{
    WriteText(name, value ? u"1"_s : u"0"_s);
}

void RegistryAccessor::WriteNumber(const QString& name, std::uint32_t value)
{
    Write(name, RegistryValue::FromDword(value));
}

void RegistryAccessor::WriteText(const QString& name, const QString& value)
{
    Write(name, RegistryValue::FromString(value));
}

void RegistryAccessor::Write(const QString& name, const RegistryValue& value)
{
    if (const Win32Error error = m_key.Set(name, value); error != ERROR_SUCCESS)
        throw Win32Exception(error, u"Cannot write registry value");
}

void RegistryAccessor::Save(const QString& name, QFileDevice* journal) const
{
    RegistryJournal(journal).Write(m_key.Read(name));
}

void RegistryAccessor::Restore(const QString& name, QFileDevice* journal)
{
    const std::optional<RegistryValue> saved = RegistryJournal(journal).Read();
    if (!m_key.Exists())
        return;
    if (saved) {
        m_key.Write(name, *saved);
        return;
    }
    const Win32Error error = m_key.Delete(name);
    if (error != ERROR_SUCCESS && error != ERROR_FILE_NOT_FOUND)
        throw Win32Exception(error, u"Can't delete registry value '%s'", name);
}

QString RegistryAccessor::GetServerName() const
{
    return ReadText(u"ServerName"_s);
}

int RegistryAccessor::GetServerPort(bool secure) const
{
    return static_cast<int>(std::wcstol(ReadText(PortValue(secure)).toStdWString().c_str(), nullptr, 10));
}

QString RegistryAccessor::GetRepositoriesRoot() const
{
    return ReadText(u"RepositoriesRoot"_s);
}
QString RegistryAccessor::GetInstallDir() const
{
    return ReadText(u"InstallDir"_s);
}
bool RegistryAccessor::GetUseSsl() const
{
    return ReadFlag(u"UseSSL"_s);
}
bool RegistryAccessor::GetUseWindowsAuth() const
{
    return ReadFlag(u"UseWindowsAuth"_s);
}
bool RegistryAccessor::GetUseUpnFormat() const
{
    return ReadFlag(u"UseUPNFormat"_s);
}
bool RegistryAccessor::GetWindowsBasicEnabled() const
{
    return !ReadFlag(u"DisableWindowsBasic"_s);
}
bool RegistryAccessor::GetWindowsIntegratedEnabled() const
{
    return ReadFlag(u"EnableWindowsIntegrated"_s);
}
bool RegistryAccessor::GetUseServerBindings() const
{
    return ReadFlag(u"UseServerBindings"_s);
}

QStringList RegistryAccessor::GetServerBindings() const
{
    return m_key.ReadList(u"ServerBindings"_s).value_or(QStringList());
}

bool RegistryAccessor::GetAccessLoggingEnabled() const
{
    return ReadNumber(u"EnableAccessLogging"_s) != 0;
}
bool RegistryAccessor::GetOperationalLoggingEnabled() const
{
    return ReadNumber(u"EnableOperationalLogging"_s) != 0;
}

bool RegistryAccessor::GetAdjustRepositoriesRootPermissions() const
{
    return ReadNumber(u"DoNotAdjustRepositoriesRootPermissions"_s) == 0;
}

bool RegistryAccessor::GetCreateGnuTlsCompatibleCertificate() const
{
    return ReadNumber(u"CreateGnuTLSCompatibleCertificate"_s) != 0;
}

bool RegistryAccessor::GetRedirectFromLegacyWebInterface() const
{
    return ReadNumber(u"DisableRedirectionFromLegacyWebInterface"_s) == 0;
}

std::uint32_t RegistryAccessor::GetWmiProviderLogLevel() const
{
    return ReadNumber(u"WmiProviderLogLevel"_s, 1);
}

void RegistryAccessor::SaveQdfsAdminSD(QFileDevice* journal) const
{
    Save(kAdmins, journal);
}
void RegistryAccessor::RestoreQdfsAdminSD(QFileDevice* journal)
{
    Restore(kAdmins, journal);
}
void RegistryAccessor::SaveQdfsReplicationPartnersSID(QFileDevice* journal) const
{
    Save(kReplicationPartners, journal);
}
void RegistryAccessor::RestoreQdfsReplicationPartnersSID(QFileDevice* journal)
{
    Restore(kReplicationPartners, journal);
}

void RegistryAccessor::SetServerName(const QString& name)
{
    WriteText(u"ServerName"_s, name);
}
void RegistryAccessor::SetRepositoriesRoot(const QString& folder)
{
    WriteText(u"RepositoriesRoot"_s, folder);
}
void RegistryAccessor::SetServerPort(bool secure, int port)
{
    WriteText(PortValue(secure), QString::number(port));
}
void RegistryAccessor::SetUseSsl(bool use)
{
    WriteFlag(u"UseSSL"_s, use);
}
void RegistryAccessor::SetUseWindowsAuth(bool use)
{
    WriteFlag(u"UseWindowsAuth"_s, use);
}
void RegistryAccessor::SetUseUpnFormat(bool use)
{
    WriteFlag(u"UseUPNFormat"_s, use);
}
void RegistryAccessor::SetWindowsBasicEnabled(bool enabled)
{
    WriteFlag(u"DisableWindowsBasic"_s, !enabled);
}
void RegistryAccessor::SetWindowsIntegratedEnabled(bool enabled)
{
    WriteFlag(u"EnableWindowsIntegrated"_s, enabled);
}
void RegistryAccessor::SetUseServerBindings(bool use)
{
    WriteFlag(u"UseServerBindings"_s, use);
}

void RegistryAccessor::SetServerBindings(const QStringList& addresses)
{
    Write(u"ServerBindings"_s, RegistryValue::FromStringList(addresses));
}

void RegistryAccessor::SetAccessLoggingEnabled(bool enabled)
{
    WriteNumber(u"EnableAccessLogging"_s, enabled ? 1 : 0);
}

void RegistryAccessor::SetOperationalLoggingEnabled(bool enabled)
{
    WriteNumber(u"EnableOperationalLogging"_s, enabled ? 1 : 0);
}

void RegistryAccessor::SetAdjustRepositoriesRootPermissions(bool adjust)
{
    WriteNumber(u"DoNotAdjustRepositoriesRootPermissions"_s, adjust ? 0 : 1);
}

void RegistryAccessor::SetQdfsAdminSD(const QString& descriptor)
{
    WriteText(kAdmins, descriptor);
}
void RegistryAccessor::SetQdfsReplicationPartnersSID(const QString& sid)
{
    WriteText(kReplicationPartners, sid);
}

void RegistryAccessor::SetRedirectFromLegacyWebInterface(bool redirect)
{
    WriteNumber(u"DisableRedirectionFromLegacyWebInterface"_s, redirect ? 0 : 1);
}

} // namespace quenvolta
