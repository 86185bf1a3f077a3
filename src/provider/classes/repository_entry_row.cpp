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
    , m_path(m_row.PlaceOf(u"Path"))
    , m_kind(m_row.PlaceOf(u"Kind"))
    , m_name(m_row.PlaceOf(u"Name"))
    , m_url(m_row.PlaceOf(u"URL"))
    , m_inheritedOnly(m_row.PlaceOf(u"InheritedOnlyPermissions"))
    , m_repositoryUrl(repositoryUrl)
    , m_securedPaths(accounts.SecuredPaths(repository))
{
    m_row.Set(u"RepositoryName", repository);
}

const InstanceRow& RepositoryEntryRow::Of(const RepositoryEntry& entry)
{
    if (m_folder != entry.parentPath)
        EnterFolder(entry.parentPath);
    m_row.SetAt(m_kind, entry.isFolder ? kFolderKind : kFileKind);
    m_row.SetTextAt(m_path, entry.path, {});
    m_row.SetTextAt(m_name, entry.name, {});
    m_row.SetTextAt(m_url, m_folderUrl, EncodeForUrl(entry.name));
    m_row.SetAt(m_inheritedOnly, m_securedPaths.isEmpty() || !m_securedPaths.contains(entry.path));
    return m_row;
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
