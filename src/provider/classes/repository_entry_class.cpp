#include "provider/classes/repository_entry_class.h"

#include "provider/provider_error.h"
#include "provider/svn/repository_store.h"

#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::uint32_t kFileKind = 0;
constexpr std::uint32_t kFolderKind = 1;

} // namespace

RepositoryEntryClass::RepositoryEntryClass(DataFolder& data, std::shared_ptr<AccountStore> accounts)
    : m_settings(data.Settings())
    , m_accounts(std::move(accounts))
{
}

std::optional<InstanceRow> RepositoryEntryClass::Get(const ClassDefinitionPtr& definition, const Keys& keys,
                                                     CallContext&)
{
    const QString repository = keys.value(u"RepositoryName"_s);
    const RepositoryEntry entry =
        RepositoryStore(m_settings.RepositoriesRoot()).Entry(repository, keys.value(u"Path"_s));
    return Row(definition, repository, m_settings.RepositoriesUrl() + EncodeForUrl(repository), entry,
               *m_accounts->Read());
}

InstanceRow RepositoryEntryClass::Row(const ClassDefinitionPtr& definition, const QString& repository,
                                      const QString& repositoryUrl, const RepositoryEntry& entry,
                                      const AccountModel& accounts)
{
    InstanceRow row(definition);
    row.Set(u"RepositoryName", repository)
        .Set(u"Path", entry.path)
        .Set(u"Kind", entry.isFolder ? kFolderKind : kFileKind)
        .Set(u"Name", entry.name)
        .Set(u"URL", repositoryUrl + EncodeForUrl(entry.path))
        .Set(u"InheritedOnlyPermissions", !accounts.HasPermissions({repository, entry.path}));
    if (!entry.parentPath.isEmpty())
        row.Set(u"ParentPath", entry.parentPath);
    return row;
}

} // namespace quenvolta
