#include "model/server_proxy.h"
#include "wmi/object_paths.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::uint32_t kDefaultHttpPort = 80;
constexpr std::uint32_t kDefaultHttpsPort = 443;

// The server's number for a folder.
constexpr std::uint32_t kServerFolderKind = 1;

} // namespace

QString CServerProxy::RepositoryPath(const QString& name) const
{
    return BuildObjectPath(m_classes.repository.ClassName(), name);
}

QString CServerProxy::EntryPath(const TreePosition& position) const
{
    return BuildObjectPath(m_classes.repositoryEntry.ClassName(),
                           {{u"RepositoryName"_s, position.repositoryName}, {u"Path"_s, position.path}});
}

PermissionState CServerProxy::ReadPermissionState(const WMIObject& object) const
{
    if (!HasCapability(ServerCapability::kPermissionState))
        return PermissionState::Unknown;
    return object.GetBool(u"InheritedOnlyPermissions"_s) ? PermissionState::InheritedOnly : PermissionState::Explicit;
}

RepositoryInfo CServerProxy::ReadRepository(const WMIObject& object) const
{
    RepositoryInfo info;
    info.permissionState = ReadPermissionState(object);
    if (HasCapability(ServerCapability::kRepositoryType)) {
        info.type = object.GetOptionalInt32(u"Type"_s);
        info.totalRevisions = object.GetOptionalInt32(u"TotalRevisions"_s);
    }
    if (info.type == kRepositoryTypeQdfsSlave) {
        info.masterServer = object.GetString(u"MasterServer"_s);
        info.masterRepository = object.GetString(u"MasterRepository"_s);
    }
    info.url = object.GetString(u"URL"_s);
    info.name = object.GetString(u"Name"_s);
    return info;
}

RepositoryEntryInfo CServerProxy::ReadEntry(const WMIObject& object) const
{
    RepositoryEntryInfo info;
    info.path = object.GetString(u"Path"_s);
    info.repositoryName = object.GetString(u"RepositoryName"_s);
    info.kind = object.GetUInt32(u"Kind"_s) == kServerFolderKind ? EntryKind::Folder : EntryKind::File;
    info.name = object.GetString(u"Name"_s);
    if (!object.IsNull(u"ParentPath"_s))
        info.parentPath = object.GetString(u"ParentPath"_s);
    info.url = object.GetString(u"URL"_s);
    info.permissionState = ReadPermissionState(object);
    return info;
}

QList<RepositoryInfo> CServerProxy::GetRepositories()
{
    WMIEnumerator enumerator = m_connection.EnumerateInstances(m_classes.repository.ClassName());
    QList<RepositoryInfo> repositories;
    for (WMIObject object; enumerator.Next(&object);)
        repositories.append(ReadRepository(object));
    return repositories;
}

RepositoryInfo CServerProxy::GetRepository(const QString& name)
{
    return ReadRepository(m_connection.GetObject(RepositoryPath(name)));
}

bool CServerProxy::RepositoryExists(const QString& name)
{
    return !m_connection.GetObject(RepositoryPath(name), true).IsEmpty();
}

QList<RepositoryEntryInfo> CServerProxy::GetChildren(const TreePosition& position)
{
    return ServerCall(m_connection, m_classes.repository, u"GetChildren"_s)
        .With(u"Path"_s, position.path)
        .RunForElements(RepositoryPath(position.repositoryName), u"Children"_s,
                        [this](const WMIObject& child) { return ReadEntry(child); });
}

QString CServerProxy::GetUrl(const TreePosition& position)
{
    const WMIObject object =
        position.repositoryName.isEmpty() ? GetService() : m_connection.GetObject(EntryPath(position));
    return object.GetString(u"URL"_s);
}

QString CServerProxy::BuildRepositoryUrl(const QString& name)
{
    const ServerSettings settings = GetServerSettings();
    const bool secure = settings.useSecureConnection;
    const std::uint32_t port = secure ? settings.securePort : settings.unsecurePort;
    QString url = (secure ? u"https://"_s : u"http://"_s) + settings.serverName;
    if (port != (secure ? kDefaultHttpsPort : kDefaultHttpPort))
        url += u':' + QString::number(port);
    return url + "/svn/"_L1 + name;
}

void CServerProxy::CreateRepository(const QString& name)
{
    ServerCall(m_connection, m_classes.repository, u"Create"_s)
        .With(u"Name"_s, name)
        .Run(m_classes.repository.ClassName());
}

void CServerProxy::CreateQdfsMaster(const QString& name)
{
    ServerCall(m_connection, m_classes.repository, u"CreateQdfsMaster"_s)
        .With(u"Name"_s, name)
        .Run(m_classes.repository.ClassName());
}

void CServerProxy::CreateQdfsSlave(const QString& name, const QString& masterServer, const QString& masterRepository)
{
    ServerCall(m_connection, m_classes.repository, u"CreateQdfsSlave"_s)
        .With(u"Name"_s, name)
        .With(u"MasterServer"_s, masterServer)
        .With(u"MasterRepository"_s, masterRepository)
        .Run(m_classes.repository.ClassName());
}

void CServerProxy::TestQdfsConnection(const QString& serverName, const QString& repositoryName)
{
    ServerCall(m_connection, m_classes.repository, u"TestQdfsConnection"_s)
        .With(u"ServerName"_s, serverName)
        .With(u"RepositoryName"_s, repositoryName)
        .Run(m_classes.repository.ClassName());
}

void CServerProxy::RenameRepository(const QString& oldName, const QString& newName)
{
    ServerCall(m_connection, m_classes.repository, u"Rename"_s)
        .With(u"OldName"_s, oldName)
        .With(u"NewName"_s, newName)
        .Run(m_classes.repository.ClassName());
}

void CServerProxy::DeleteRepository(const QString& name)
{
    ServerCall(m_connection, m_classes.repository, u"Delete"_s)
        .With(u"Name"_s, name)
        .Run(m_classes.repository.ClassName());
}

void CServerProxy::CreateFolders(const QString& repositoryName, const QStringList& folders, const QString& message)
{
    ServerCall(m_connection, m_classes.repository, u"CreateFolders"_s)
        .With(u"Folders"_s, folders)
        .With(u"Message"_s, message)
        .Run(RepositoryPath(repositoryName));
}

void CServerProxy::DeleteFolders(const QString& repositoryName, const QStringList& paths, const QString& message)
{
    ServerCall(m_connection, m_classes.repository, u"DeleteFolders"_s)
        .With(u"Folders"_s, paths)
        .With(u"Message"_s, message)
        .Run(RepositoryPath(repositoryName));
}

std::uint32_t CServerProxy::ConvertToFsfs(const QString& name)
{
    return m_connection.ExecMethod(RepositoryPath(name), u"ConvertToFsfs"_s).GetUInt32(u"ReturnValue"_s);
}

std::uint32_t CServerProxy::ConvertToQdfs(const QString& name)
{
    return m_connection.ExecMethod(RepositoryPath(name), u"ConvertToQdfs"_s).GetUInt32(u"ReturnValue"_s);
}

void CServerProxy::Upgrade(const QString& name)
{
    m_connection.ExecMethod(RepositoryPath(name), u"Upgrade"_s);
}

void CServerProxy::ChangeMasterTo(const QString& name, const QString& masterServer, const QString& masterRepository)
{
    ServerCall(m_connection, m_classes.repository, u"ChangeMasterTo"_s)
        .With(u"MasterServer"_s, masterServer)
        .With(u"MasterRepository"_s, masterRepository)
        .Run(RepositoryPath(name));
}

bool CServerProxy::SupportsMergeinfo(const QString& name)
{
    return ServerCall(m_connection, m_classes.repository, u"HasCapability"_s)
        .With(u"Capability"_s, u"mergeinfo"_s)
        .Run(RepositoryPath(name))
        .GetBool(u"ReturnValue"_s);
}

std::uint32_t CServerProxy::GetImportSourceType(const QString& path)
{
    return ServerCall(m_connection, m_classes.repository, u"GetImportSourceType"_s)
        .With(u"Path"_s, path)
        .Run(m_classes.repository.ClassName())
        .GetUInt32(u"ReturnValue"_s);
}

} // namespace quenvolta
