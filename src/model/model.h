#pragma once

#include "foundation/preferences.h"
#include "model/account_results.h"
#include "model/authentication_options.h"
#include "model/certificate_info.h"
#include "model/certificate_subject_info.h"
#include "model/file_downloader.h"
#include "model/group_member.h"
#include "model/hook_info.h"
#include "model/model_events.h"
#include "model/model_subscribers.h"
#include "model/permission_entry.h"
#include "model/repository_entry_info.h"
#include "model/repository_info.h"
#include "model/role_settings.h"
#include "model/server_capability.h"
#include "model/server_settings.h"
#include "model/server_status.h"
#include "model/server_version_info.h"
#include "model/service_status.h"
#include "model/tree_position.h"
#include "model/update_info.h"
#include "wmi/locator_factory.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <optional>

namespace quenvolta
{

class CComputerDirectory;
class CServerProxy;
class IcAsyncCallMonitor;
struct StartedActivity;

/// The console's picture of the one server that it manages. Every operation may throw; one that needs the server
/// connects a disconnected model first. A failed operation notifies nobody.
class CModel : private IcFileDownloaderEvents
{
public:
    /// The preferences must outlive the model.
    CModel(WbemLocatorFactory locatorFactory, IcPreferences& preferences, UpdateService updateService = {});
    ~CModel() override;
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

    /// Asks the update service whether there is a newer server than the connected one, and returns at once. Each
    /// connection does so. Nothing happens without a service, or when the preferences turn the check off.
    void CheckForUpdates();
    bool IsUpdateCheckDisabled() const { return m_preferences.IsUpdateCheckDisabled(); }
    /// What the last check found.
    const UpdateInfo& GetUpdateInfo() const { return m_updateInfo; }

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
    HookInfo GetHook(const QString& repositoryName, HookKind kind);
    void SetHook(const QString& repositoryName, HookKind kind, const QString& text);
    /// Also for a hook that the repository doesn't have.
    void DeleteHook(const QString& repositoryName, HookKind kind);

    // Calls that may run for minutes: the server takes them on, and the monitor watches each to its end. A call that
    // can't be started fails without the monitor.
    /// The mode is the server's number for the form of what stands at the path; 0 is a repository.
    void ImportRepository(const QString& name, const QString& importPath, std::int32_t importMode,
                          IcAsyncCallMonitor& monitor);
    void ImportQdfsMaster(const QString& name, const QString& importPath, bool permissions, bool delegation, bool hooks,
                          IcAsyncCallMonitor& monitor);
    void CheckReplicationConsistency(const QString& name, IcAsyncCallMonitor& monitor);
    void ExportReplicationSeed(const QString& name, const QString& destinationPath, IcAsyncCallMonitor& monitor);
    /// Asks the server to end a call that it took on; the call tells what came of it.
    void CancelActivity(const QString& activityId);

    // Accounts and permissions
    // Refusals that a dialog words itself are results; every other failure is thrown.
    /// Names in the server's order.
    QStringList GetUsers();
    QStringList GetGroups();
    UserCreation CreateUser(const QString& name, const QString& password);
    void SetPassword(const QString& userName, const QString& password);
    void DeleteUser(const QString& name);
    GroupCreation CreateGroup(const QString& name, const QList<GroupMember>& members);
    QList<GroupMember> GetGroupMembers(const QString& name);
    MembershipChange SetGroupMembers(const QString& name, const QList<GroupMember>& members);
    void DeleteGroup(const QString& name);
    PermissionList GetSecurity(const TreePosition& target);
    void SetSecurity(const TreePosition& target, const PermissionList& entries);

    // Roles: lists of Windows accounts by their security identifiers
    QStringList GetServerAdmins();
    void SetServerAdmins(const QStringList& identifiers);
    QStringList GetRepositorySupervisors();
    void SetRepositorySupervisors(const QStringList& identifiers);
    QStringList GetReplicationPartners();
    void SetReplicationPartners(const QStringList& identifiers);
    /// Who manages the repository.
    RoleSettings GetDelegationSettings(const QString& repositoryName);
    void SetDelegationSettings(const QString& repositoryName, const RoleSettings& settings);
    /// Who replicates the repository.
    RoleSettings GetReplicationSettings(const QString& repositoryName);
    void SetReplicationSettings(const QString& repositoryName, const RoleSettings& settings);

    // The server and its services
    ServerVersionInfo GetServerVersionInfo();
    ServerSettings GetServerSettings();
    ServerStatus GetServerStatus();
    std::uint32_t GetHttpServiceState();
    ServiceExitState GetHttpServiceExitState();
    ServiceStatus GetQdfsServiceState();
    ServiceExitState GetQdfsServiceExitState();
    /// Opens the search for accounts and computers that the managed computer knows.
    std::unique_ptr<CComputerDirectory> OpenComputerDirectory();
    /// The addresses of the computer's network adapters, as the standard namespace lists them.
    QStringList GetServerIpAddresses();
    void StartHttpService();
    void StopHttpService();
    /// Servers of version 2.2 or later (kRestartService).
    void RestartHttpService();
    void StartQdfsService();
    void StopQdfsService();
    void ChangeQdfsStartMode(std::uint32_t startMode);
    /// Lets the service start with its computer.
    void EnableQdfsService();
    void SetAuthenticationOptions(const AuthenticationOptions& options);
    /// The port is that of the chosen kind of connection. Without addresses the server listens on all of them.
    void SetNetworkOptions(bool useSecureConnection, std::int32_t port, const std::optional<QStringList>& addresses);
    /// Without a name the server is called as its computer.
    void SetServerName(const std::optional<QString>& customName);
    void SetLoggingOptions(bool accessLogging, bool operationalLogging);
    void SetWebInterfaceOptions(bool redirectFromLegacyWebInterface);
    /// The server's answer: kRepositoriesRootSet, kRepositoriesRootMissing or another number. `forceCreate` makes a
    /// missing folder. Announced when it was set.
    std::uint32_t SetRepositoriesRoot(const QString& path, bool adjustPermissions, bool forceCreate);

    // The server's certificate
    /// Empty when the server has none.
    CertificateInfo GetCertificateInformation();
    void CreateSelfSignedCertificate(const CertificateSubjectInfo& subject, std::int32_t days);
    /// The request for a certification authority, as PEM text. The server keeps its key.
    QString CreateCertificateRequest(const CertificateSubjectInfo& subject);
    /// PEM text of a certificate and perhaps its key.
    void ImportCertificate(const QString& base64Certificate);
    /// How the certificate fits its key, in the server's numbers; 0 fits a key that the server holds.
    std::uint32_t ValidateCertificate(const QString& base64Certificate);

private:
    void OnDownloadComplete(const QString& path) override;
    void OnDownloadFailed(HRESULT code) override;
    void SetUpdateInfo(const UpdateInfo& info);
    void RunActivity(StartedActivity started, IcAsyncCallMonitor& monitor);
    void AddStructureAndAnnounce(const QString& name, bool withStructure);
    std::uint32_t AnnounceConversion(const QString& name, std::uint32_t answer);

    ModelSubscribers m_subscribers;
    QString m_computerName;
    WbemLocatorFactory m_locatorFactory;
    std::unique_ptr<CServerProxy> m_proxy;
    IcPreferences& m_preferences;
    UpdateService m_updateService;
    UpdateInfo m_updateInfo;
    std::unique_ptr<IcFileDownloader> m_downloader; // goes first: it reports to the model
};

} // namespace quenvolta
