#include "foundation/exception.h"
#include "model/model.h"
#include "model/server_proxy.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

QList<RepositoryInfo> CModel::GetRepositories()
{
    return GetProxy().GetRepositories();
}

RepositoryInfo CModel::GetRepository(const QString& name)
{
    return GetProxy().GetRepository(name);
}

bool CModel::RepositoryExists(const QString& name)
{
    return GetProxy().RepositoryExists(name);
}

QList<RepositoryEntryInfo> CModel::GetChildren(const TreePosition& position)
{
    return GetProxy().GetChildren(position);
}

QString CModel::GetUrl(const TreePosition& position)
{
    return GetProxy().GetUrl(position);
}

QString CModel::BuildRepositoryUrl(const QString& name)
{
    return GetProxy().BuildRepositoryUrl(name);
}

void CModel::AddStructureAndAnnounce(const QString& name, bool withStructure)
{
    if (withStructure) {
        try {
            CreateFolders(name, {u"trunk"_s, u"branches"_s, u"tags"_s}, u"Initial structure."_s);
        } catch (const Exception&) {
            // The repository is there all the same, and the views must learn of it.
            m_subscribers.Notify(&IcModelEvents::OnRepositoryCreated, name);
            throw;
        }
    }
    m_subscribers.Notify(&IcModelEvents::OnRepositoryCreated, name);
}

void CModel::CreateRepository(const QString& name, bool withStructure)
{
    GetProxy().CreateRepository(name);
    AddStructureAndAnnounce(name, withStructure);
}

void CModel::CreateQdfsMaster(const QString& name, bool withStructure)
{
    GetProxy().CreateQdfsMaster(name);
    AddStructureAndAnnounce(name, withStructure);
}

void CModel::CreateQdfsSlave(const QString& name, const QString& masterServer, const QString& masterRepository)
{
    GetProxy().CreateQdfsSlave(name, masterServer, masterRepository);
    m_subscribers.Notify(&IcModelEvents::OnRepositoryCreated, name);
}

void CModel::TestQdfsConnection(const QString& serverName, const QString& repositoryName)
{
    GetProxy().TestQdfsConnection(serverName, repositoryName);
}

void CModel::RenameRepository(const QString& oldName, const QString& newName)
{
    GetProxy().RenameRepository(oldName, newName);
    m_subscribers.Notify(&IcModelEvents::OnRepositoryRenamed, oldName, newName);
}

void CModel::DeleteRepository(const QString& name)
{
    GetProxy().DeleteRepository(name);
    m_subscribers.Notify(&IcModelEvents::OnRepositoryDeleted, name);
}

void CModel::CreateFolders(const QString& repositoryName, const QStringList& folders, const QString& message)
{
    GetProxy().CreateFolders(repositoryName, folders, message);
}

void CModel::DeleteFolders(const QString& repositoryName, const QStringList& paths, const QString& message)
{
    GetProxy().DeleteFolders(repositoryName, paths, message);
}

std::uint32_t CModel::AnnounceConversion(const QString& name, std::uint32_t answer)
{
    if (answer == 0)
        m_subscribers.Notify(&IcModelEvents::OnRepositoryConverted, name);
    return answer;
}

std::uint32_t CModel::ConvertToFsfs(const QString& name)
{
    return AnnounceConversion(name, GetProxy().ConvertToFsfs(name));
}

std::uint32_t CModel::ConvertToQdfs(const QString& name)
{
    return AnnounceConversion(name, GetProxy().ConvertToQdfs(name));
}

void CModel::Upgrade(const QString& name)
{
    GetProxy().Upgrade(name);
}

void CModel::ChangeMasterTo(const QString& name, const QString& masterServer, const QString& masterRepository)
{
    GetProxy().ChangeMasterTo(name, masterServer, masterRepository);
}

bool CModel::SupportsMergeinfo(const QString& name)
{
    return GetProxy().SupportsMergeinfo(name);
}

std::uint32_t CModel::GetImportSourceType(const QString& path)
{
    return GetProxy().GetImportSourceType(path);
}

HookInfo CModel::GetHook(const QString& repositoryName, HookKind kind)
{
    return GetProxy().GetHook(repositoryName, kind);
}

void CModel::SetHook(const QString& repositoryName, HookKind kind, const QString& text)
{
    GetProxy().SetHook(repositoryName, kind, text);
}

void CModel::DeleteHook(const QString& repositoryName, HookKind kind)
{
    GetProxy().DeleteHook(repositoryName, kind);
}

} // namespace quenvolta
