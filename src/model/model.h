#pragma once

#include "foundation/preferences.h"
#include "model/group_member.h"
#include "model/model_events.h"
#include "model/model_subscribers.h"
#include "model/permission_entry.h"
#include "model/repository_entry_info.h"
#include "model/repository_info.h"
#include "model/server_capability.h"
#include "model/server_settings.h"
#include "model/server_status.h"
#include "model/server_version_info.h"
#include "model/service_status.h"
#include "model/tree_position.h"
#include "wmi/locator_factory.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>

namespace quenvolta
{

class CServerProxy;

/// The console's picture of the one server that it manages. Every operation may throw; one that needs the server
/// connects a disconnected model first. A failed operation notifies nobody.
class CModel
{
public:
    /// The preferences must outlive the model.
    CModel(WbemLocatorFactory locatorFactory, IcPreferences& preferences);
    ~CModel();
    CModel(const CModel&) = delete;
    CModel& operator=(const CModel&) = delete;

    /// Subscribers are called in the order of their subscriptions, one that subscribed twice twice.
    void Subscribe(IcModelEvents& subscriber);
    /// Ends all subscriptions of the subscriber; allowed during a notification.
    void Unsubscribe(IcModelEvents& subscriber);

    /// Connects to a computer (empty: the local one) and remembers a named one among the recent servers. On failure
    /// nothing changes.
    void Connect(const QString& computerName);
    /// Connects, or with `offline` only disconnects; then keeps the name and raises OnComputerChanged. On failure
    /// nothing changes.
    void SetComputer(const QString& computerName, bool offline);
    void Disconnect();
    bool IsConnected() const { return m_proxy != nullptr; }
    /// The connection, made with the kept computer name when there is none.
    CServerProxy& GetProxy();
    /// Empty for the local computer.
    const QString& ComputerName() const { return m_computerName; }
    /// True when the server has any capability of the mask (ServerCapability); connects when needed.
    bool HasCapability(std::uint32_t mask);
    std::uint32_t GetFeatureLevel();

    // Repositories and their entries
    QList<RepositoryInfo> GetRepositories();
    RepositoryInfo GetRepository(const QString& name);
    bool RepositoryExists(const QString& name);
    QList<RepositoryEntryInfo> GetChildren(const TreePosition& position);
    /// The address that the server reports; its base address for an empty repository name.
    QString GetUrl(const TreePosition& position);
    /// The address that a repository of the name would have.
    QString BuildRepositoryUrl(const QString& name);
    /// With the structure, the folders trunk, branches and tags are made; when they fail, the repository is there
    /// and was announced all the same.
    void CreateRepository(const QString& name, bool withStructure);
    void CreateQdfsMaster(const QString& name, bool withStructure);
    void CreateQdfsSlave(const QString& name, const QString& masterServer, const QString& masterRepository);
    /// Returns when the master answered.
    void TestQdfsConnection(const QString& serverName, const QString& repositoryName);
    void RenameRepository(const QString& oldName, const QString& newName);
    void DeleteRepository(const QString& name);
    void CreateFolders(const QString& repositoryName, const QStringList& folders, const QString& message);
    void DeleteFolders(const QString& repositoryName, const QStringList& paths, const QString& message);
    /// The server's answer, 0 for success.
    std::uint32_t ConvertToFsfs(const QString& name);
    std::uint32_t ConvertToQdfs(const QString& name);
    void Upgrade(const QString& name);
    void ChangeMasterTo(const QString& name, const QString& masterServer, const QString& masterRepository);
    bool SupportsMergeinfo(const QString& name);
    std::uint32_t GetImportSourceType(const QString& path);

    // Accounts and permissions
    /// Names in the server's order.
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

    // The server and its services
    ServerVersionInfo GetServerVersionInfo();
    ServerSettings GetServerSettings();
    ServerStatus GetServerStatus();
    std::uint32_t GetHttpServiceState();
    ServiceExitState GetHttpServiceExitState();
    ServiceStatus GetQdfsServiceState();
    ServiceExitState GetQdfsServiceExitState();
    /// The addresses of the computer's network adapters, as the standard namespace lists them.
    QStringList GetServerIpAddresses();

private:
    void AddStructureAndAnnounce(const QString& name, bool withStructure);
    std::uint32_t AnnounceConversion(const QString& name, std::uint32_t answer);

    ModelSubscribers m_subscribers;
    QString m_computerName;
    WbemLocatorFactory m_locatorFactory;
    std::unique_ptr<CServerProxy> m_proxy;
    IcPreferences& m_preferences;
};

} // namespace quenvolta
