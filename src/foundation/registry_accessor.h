#pragma once

#include "foundation/registry_key.h"

#include <QString>
#include <QStringList>
#include <QStringView>

namespace quenvolta
{

/// The configuration values of the server, read and written one by one.
class RegistryAccessor
{
public:
    static constexpr QStringView kServerKey = u"SOFTWARE\\Quenvolta\\Quenvolta Server";

    RegistryAccessor(Registry& registry, const QString& keyPath);

    QString GetServerName() const;
    int GetServerPort(bool secure) const;
    QString GetRepositoriesRoot() const;
    QString GetInstallDir() const;
    bool GetUseSsl() const;
    bool GetUseWindowsAuth() const;
    bool GetUseUpnFormat() const;
    bool GetWindowsBasicEnabled() const;
    bool GetWindowsIntegratedEnabled() const;
    bool GetUseServerBindings() const;
    QStringList GetServerBindings() const;
    bool GetAccessLoggingEnabled() const;
    bool GetOperationalLoggingEnabled() const;
    bool GetAdjustRepositoriesRootPermissions() const;
    bool GetCreateGnuTlsCompatibleCertificate() const;
    bool GetRedirectFromLegacyWebInterface() const;
    std::uint32_t GetWmiProviderLogLevel() const;

    void SetServerName(const QString& name);
    void SetRepositoriesRoot(const QString& folder);
    void SetServerPort(bool secure, int port);
    void SetUseSsl(bool use);
    void SetUseWindowsAuth(bool use);
    void SetUseUpnFormat(bool use);
    void SetWindowsBasicEnabled(bool enabled);
    void SetWindowsIntegratedEnabled(bool enabled);
    void SetUseServerBindings(bool use);
    void SetServerBindings(const QStringList& addresses);
    void SetAccessLoggingEnabled(bool enabled);
    void SetOperationalLoggingEnabled(bool enabled);
    void SetAdjustRepositoriesRootPermissions(bool adjust);
    void SetRedirectFromLegacyWebInterface(bool redirect);

private:
    bool ReadFlag(const QString& name) const;
    std::uint32_t ReadNumber(const QString& name, std::uint32_t fallback = 0) const;
    QString ReadText(const QString& name) const;
    void WriteFlag(const QString& name, bool value);
    void WriteNumber(const QString& name, std::uint32_t value);
    void WriteText(const QString& name, const QString& value);

    RegistryKey m_key;
};

} // namespace quenvolta
