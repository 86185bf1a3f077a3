#pragma once

#include "model/account_marshaller.h"
#include "model/authentication_options.h"
#include "model/certificate_info.h"
#include "model/certificate_subject_info.h"
#include "model/class_caches.h"
#include "model/computer_directory.h"
#include "model/group_member.h"
#include "model/hook_info.h"
#include "model/permission_entry.h"
#include "model/repository_entry_info.h"
#include "model/repository_info.h"
#include "model/role_settings.h"
#include "model/server_call.h"
#include "model/server_capability.h"
#include "model/server_settings.h"
#include "model/server_status.h"
#include "model/server_version_info.h"
#include "model/service_status.h"
#include "model/started_activity.h"
#include "model/tree_position.h"
#include "wmi/wmi_connection.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <optional>

namespace quenvolta
{

/// The connection to one server: one method for each server call. CModel says what they do.
class CServerProxy
{
public:
    /// Connects to the computer (empty: the local one) and checks the server's version. ServerNotInstalledException
    /// when it has no server, SimpleException when the server is newer than the console.
    CServerProxy(const WbemLocatorFactory& locatorFactory, const QString& computerName);
    CServerProxy(const CServerProxy&) = delete;
    CServerProxy& operator=(const CServerProxy&) = delete;

    const QString& ComputerName() const { return m_computerName; }
    std::uint32_t Capabilities() const { return m_capabilities; }
    std::uint32_t FeatureLevel() const { return m_featureLevel; }
    bool HasCapability(std::uint32_t mask) const { return (m_capabilities & mask) != 0; }

    QList<RepositoryInfo> GetRepositories();
    RepositoryInfo GetRepository(const QString& name);
    bool RepositoryExists(const QString& name);
    QList<RepositoryEntryInfo> GetChildren(const TreePosition& position);
    QString GetUrl(const TreePosition& position);
    QString BuildRepositoryUrl(const QString& name);
    void CreateRepository(const QString& name);
    void CreateQdfsMaster(const QString& name);
    void CreateQdfsSlave(const QString& name, const QString& masterServer, const QString& masterRepository);
    void TestQdfsConnection(const QString& serverName, const QString& repositoryName);
    void RenameRepository(const QString& oldName, const QString& newName);
    void DeleteRepository(const QString& name);
    void CreateFolders(const QString& repositoryName, const QStringList& folders, const QString& message);
    void DeleteFolders(const QString& repositoryName, const QStringList& paths, const QString& message);
    std::uint32_t ConvertToFsfs(const QString& name);
    std::uint32_t ConvertToQdfs(const QString& name);
    void Upgrade(const QString& name);
    void ChangeMasterTo(const QString& name, const QString& masterServer, const QString& masterRepository);
    bool SupportsMergeinfo(const QString& name);
    std::uint32_t GetImportSourceType(const QString& path);
    HookInfo GetHook(const QString& repositoryName, HookKind kind);
    void SetHook(const QString& repositoryName, HookKind kind, const QString& text);
    void DeleteHook(const QString& repositoryName, HookKind kind);
    RoleSettings GetDelegationSettings(const QString& repositoryName);
    void SetDelegationSettings(const QString& repositoryName, const RoleSettings& settings);
    RoleSettings GetReplicationSettings(const QString& repositoryName);
    void SetReplicationSettings(const QString& repositoryName, const RoleSettings& settings);

    StartedActivity ImportRepository(const QString& name, const QString& importPath, std::int32_t importMode);
    StartedActivity ImportQdfsMaster(const QString& name, const QString& importPath, bool permissions, bool delegation,
                                     bool hooks);
    StartedActivity CheckReplicationConsistency(const QString& name);
    StartedActivity ExportReplicationSeed(const QString& name, const QString& destinationPath);
    void CancelActivity(const QString& activityId);

    QStringList GetUsers();
    QStringList GetGroups();
    void CreateUser(const QString& name, const QString& password);
    void SetPassword(const QString& userName, const QString& password);
    void DeleteUser(const QString& name);
    void CreateGroup(const QString& name, const QList<GroupMember>& members);
    QList<GroupMember> GetGroupMembers(const QString& name);
    void SetGroupMembers(const QString& name, const QList<GroupMember>& members);
    bool GroupExists(const QString& name);
    void DeleteGroup(const QString& name);
    PermissionList GetSecurity(const TreePosition& target);
    void SetSecurity(const TreePosition& target, const PermissionList& entries);

    ServerVersionInfo GetServerVersionInfo();
    ServerSettings GetServerSettings();
    ServerStatus GetServerStatus();
    std::uint32_t GetHttpServiceState();
    ServiceExitState GetHttpServiceExitState();
    ServiceStatus GetQdfsServiceState();
    ServiceExitState GetQdfsServiceExitState();
    QStringList GetServerIpAddresses();
    std::unique_ptr<CComputerDirectory> OpenComputerDirectory() const;
    void StartHttpService();
    void StopHttpService();
    void RestartHttpService();
    void StartQdfsService();
    void StopQdfsService();
    void ChangeQdfsStartMode(std::uint32_t startMode);
    void SetAuthenticationOptions(const AuthenticationOptions& options);
    void SetNetworkOptions(bool useSecureConnection, std::int32_t port, const std::optional<QStringList>& addresses);
    void SetServerName(const std::optional<QString>& customName);
    void SetLoggingOptions(bool accessLogging, bool operationalLogging);
    void SetWebInterfaceOptions(bool redirectFromLegacyWebInterface);
    std::uint32_t SetRepositoriesRoot(const QString& path, bool adjustPermissions, bool forceCreate);

    QStringList GetServerAdmins();
    void SetServerAdmins(const QStringList& identifiers);
    QStringList GetRepositorySupervisors();
    void SetRepositorySupervisors(const QStringList& identifiers);
    QStringList GetReplicationPartners();
    void SetReplicationPartners(const QStringList& identifiers);

    CertificateInfo GetCertificateInformation();
    void CreateSelfSignedCertificate(const CertificateSubjectInfo& subject, std::int32_t days);
    QString CreateCertificateRequest(const CertificateSubjectInfo& subject);
    void ImportCertificate(const QString& base64Certificate);
    std::uint32_t ValidateCertificate(const QString& base64Certificate);

private:
    /// A connection to the computer's standard namespace.
    WMIConnection OpenStandardNamespace() const;
    WMIObject GetVersionObject();
    WMIObject GetService();
    WMIObject GetQdfsService();
    QString ServicePath() const;
    QString QdfsServicePath() const;
    QStringList ReadAccounts(const QString& path, const QString& method, const QString& parameter);
    RoleSettings ReadRole(const QString& repositoryName, const QString& method, const QString& parameter);
    void WriteAccounts(const QString& path, IcWMIClassRef& classRef, const QString& method, const QString& parameter,
                       const QStringList& identifiers);
    void WriteRole(const QString& repositoryName, const QString& method, const QString& parameter,
                   const RoleSettings& settings);
    ServerCall SubjectCall(const QString& method, const CertificateSubjectInfo& subject);
    QString RepositoryPath(const QString& name) const;
    QString EntryPath(const TreePosition& position) const;
    QString SecuredObjectPath(const TreePosition& target) const;
    QStringList MemberPaths(const QList<GroupMember>& members) const;
    QStringList ReadNames(const QString& className);
    RepositoryInfo ReadRepository(const WMIObject& object) const;
    RepositoryEntryInfo ReadEntry(const WMIObject& object) const;
    PermissionState ReadPermissionState(const WMIObject& object) const;
    ServerSettings ReadSettings(const WMIObject& service) const;

    WbemLocatorFactory m_locatorFactory;
    QString m_computerName;
    QString m_rootPath;
    std::uint32_t m_capabilities = 0;
    std::uint32_t m_featureLevel = 0;
    WMIConnection m_connection;
    ClassCaches m_classes;
    AccountMarshaller m_marshaller;
};

} // namespace quenvolta
