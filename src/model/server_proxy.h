#pragma once

#include "model/account_marshaller.h"
#include "model/class_caches.h"
#include "model/group_member.h"
#include "model/permission_entry.h"
#include "model/repository_entry_info.h"
#include "model/repository_info.h"
#include "model/server_capability.h"
#include "model/server_settings.h"
#include "model/server_status.h"
#include "model/server_version_info.h"
#include "model/service_status.h"
#include "model/tree_position.h"
#include "wmi/wmi_connection.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>

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

    QStringList GetUsers();
    QStringList GetGroups();
    void CreateUser(const QString& name, const QString& password);
    void SetPassword(const QString& userName, const QString& password);
    void DeleteUser(const QString& name);
    void CreateGroup(const QString& name, const QList<GroupMember>& members);
    QList<GroupMember> GetGroupMembers(const QString& name);
    void SetGroupMembers(const QString& name, const QList<GroupMember>& members);
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

private:
    WMIObject GetVersionObject();
    WMIObject GetService();
    WMIObject GetQdfsService();
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
