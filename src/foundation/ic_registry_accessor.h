#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

class QFileDevice;

namespace quenvolta
{

/// The configuration values that a server keeps of itself, read and written one by one.
class IcRegistryAccessor
{
public:
    virtual ~IcRegistryAccessor() = default;

    virtual QString GetServerName() const = 0;
    virtual int GetServerPort(bool secure) const = 0;
    virtual QString GetRepositoriesRoot() const = 0;
    virtual QString GetInstallDir() const = 0;
    virtual bool GetUseSsl() const = 0;
    virtual bool GetUseWindowsAuth() const = 0;
    virtual bool GetUseUpnFormat() const = 0;
    virtual bool GetWindowsBasicEnabled() const = 0;
    virtual bool GetWindowsIntegratedEnabled() const = 0;
    virtual bool GetUseServerBindings() const = 0;
    virtual QStringList GetServerBindings() const = 0;
    virtual bool GetAccessLoggingEnabled() const = 0;
    virtual bool GetOperationalLoggingEnabled() const = 0;
    virtual bool GetAdjustRepositoriesRootPermissions() const = 0;
    virtual bool GetCreateGnuTlsCompatibleCertificate() const = 0;
    virtual bool GetRedirectFromLegacyWebInterface() const = 0;
    virtual std::uint32_t GetWmiProviderLogLevel() const = 0;

    /// A journal is a file that the caller opened; it keeps the value as it is, or that there is none. ComException
    /// when it can't be written.
    virtual void SaveQdfsAdminSD(QFileDevice* journal) const = 0;
    /// Puts the value back as the journal has it, from where the file stands; nothing happens when the server's key is
    /// missing. SimpleException when it is no journal, ComException or Win32Exception when it can't be read.
    virtual void RestoreQdfsAdminSD(QFileDevice* journal) = 0;
    virtual void SaveQdfsReplicationPartnersSID(QFileDevice* journal) const = 0;
    virtual void RestoreQdfsReplicationPartnersSID(QFileDevice* journal) = 0;

    virtual void SetServerName(const QString& name) = 0;
    virtual void SetRepositoriesRoot(const QString& folder) = 0;
    virtual void SetServerPort(bool secure, int port) = 0;
    virtual void SetUseSsl(bool use) = 0;
    virtual void SetUseWindowsAuth(bool use) = 0;
    virtual void SetUseUpnFormat(bool use) = 0;
    virtual void SetWindowsBasicEnabled(bool enabled) = 0;
    virtual void SetWindowsIntegratedEnabled(bool enabled) = 0;
    virtual void SetUseServerBindings(bool use) = 0;
    virtual void SetServerBindings(const QStringList& addresses) = 0;
    virtual void SetAccessLoggingEnabled(bool enabled) = 0;
    virtual void SetOperationalLoggingEnabled(bool enabled) = 0;
    virtual void SetAdjustRepositoriesRootPermissions(bool adjust) = 0;
    virtual void SetQdfsAdminSD(const QString& descriptor) = 0;
    virtual void SetQdfsReplicationPartnersSID(const QString& sid) = 0;
    virtual void SetRedirectFromLegacyWebInterface(bool redirect) = 0;
};

} // namespace quenvolta
