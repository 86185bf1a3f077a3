#include "provider/classes/repository_entry_row.h"

#include "provider/server_settings_reader.h"

namespace quenvolta
{

namespace
{

constexpr std::uint32_t kFileKind = 0;
constexpr std::uint32_t kFolderKind = 1;

} // namespace

RepositoryEntryRow::RepositoryEntryRow(const ClassDefinitionPtr& definition, const QString& repository,
                                       const QString& repositoryUrl, const AccountModel& accounts)
    : m_row(definition)
    , m_repositoryUrl(repositoryUrl)
    , m_securedPaths(accounts.SecuredPaths(repository))
{
    m_row.Set(u"RepositoryName", repository);
}

const InstanceRow& RepositoryEntryRow::Of(const RepositoryEntry& entry)
{
    if (m_folder != entry.parentPath)
        EnterFolder(entry.parentPath);
    return m_row.Set(u"Path", entry.path)
        .Set(u"Kind", entry.isFolder ? kFolderKind : kFileKind)
        .Set(u"Name", entry.name)
        .Set(u"URL", m_folderUrl + EncodeForUrl(entry.name))
        .Set(u"InheritedOnlyPermissions", m_securedPaths.isEmpty() || !m_securedPaths.contains(entry.path));
}

void RepositoryEntryRow::EnterFolder(const QString& parentPath)
{
    m_folder = parentPath;
    m_folderUrl = m_repositoryUrl + EncodeForUrl(parentPath);
    if (!parentPath.isEmpty() && !parentPath.endsWith(u'/'))
        m_folderUrl += u'/';
    m_row.Set(u"ParentPath", parentPath.isEmpty() ? Variant() : Variant(parentPath));
}

} // namespace quenvolta
