#pragma once

#include "foundation/ic_registry_accessor.h"
#include "foundation/registry_key.h"

#include <QString>
#include <QStringList>
#include <QStringView>

namespace quenvolta
{

/// The values in the registry: nothing is cached, and nothing is written when the key is missing.
class RegistryAccessor final : public IcRegistryAccessor
{
public:
    static constexpr QStringView kServerKey = u"SOFTWARE\\Quenvolta\\Quenvolta Server";

    RegistryAccessor(Registry& registry, const QString& keyPath);

    QString GetServerName() const override;
    int GetServerPort(bool secure) const override;
    QString GetRepositoriesRoot() const override;
    QString GetInstallDir() const override;
    bool GetUseSsl() const override;
    bool GetUseWindowsAuth() const override;
    bool GetUseUpnFormat() const override;
    bool GetWindowsBasicEnabled() const override;
    bool GetWindowsIntegratedEnabled() const override;
    bool GetUseServerBindings() const override;
    QStringList GetServerBindings() const override;
    bool GetAccessLoggingEnabled() const override;
    bool GetOperationalLoggingEnabled() const override;
    bool GetAdjustRepositoriesRootPermissions() const override;
    bool GetCreateGnuTlsCompatibleCertificate() const override;
    bool GetRedirectFromLegacyWebInterface() const override;
    std::uint32_t GetWmiProviderLogLevel() const override;
    void SaveQdfsAdminSD(QFileDevice* journal) const override;
    void RestoreQdfsAdminSD(QFileDevice* journal) override;
    void SaveQdfsReplicationPartnersSID(QFileDevice* journal) const override;
    void RestoreQdfsReplicationPartnersSID(QFileDevice* journal) override;
    void SetServerName(const QString& name) override;
    void SetRepositoriesRoot(const QString& folder) override;
    void SetServerPort(bool secure, int port) override;
    void SetUseSsl(bool use) override;
    void SetUseWindowsAuth(bool use) override;
    void SetUseUpnFormat(bool use) override;
    void SetWindowsBasicEnabled(bool enabled) override;
    void SetWindowsIntegratedEnabled(bool enabled) override;
    void SetUseServerBindings(bool use) override;
    void SetServerBindings(const QStringList& addresses) override;
    void SetAccessLoggingEnabled(bool enabled) override;
    void SetOperationalLoggingEnabled(bool enabled) override;
    void SetAdjustRepositoriesRootPermissions(bool adjust) override;
    void SetQdfsAdminSD(const QString& descriptor) override;
    void SetQdfsReplicationPartnersSID(const QString& sid) override;
    void SetRedirectFromLegacyWebInterface(bool redirect) override;

private:
    bool ReadFlag(const QString& name) const;
    std::uint32_t ReadNumber(const QString& name, std::uint32_t fallback = 0) const;
    QString ReadText(const QString& name) const;
    void WriteFlag(const QString& name, bool value);
    void WriteNumber(const QString& name, std::uint32_t value);
    void WriteText(const QString& name, const QString& value);
    void Write(const QString& name, const RegistryValue& value);
    void Save(const QString& name, QFileDevice* journal) const;
    void Restore(const QString& name, QFileDevice* journal);

    RegistryKey m_key;
};

} // namespace quenvolta
