#include "provider/classes/repository_entry_class.h"

#include "provider/classes/repository_entry_row.h"
#include "provider/provider_error.h"
#include "provider/svn/repository_store.h"

#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

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
    const QString url = m_settings.RepositoriesUrl() + EncodeForUrl(repository);
    return RepositoryEntryRow(definition, repository, url, *m_accounts->Read()).Of(entry);
}

} // namespace quenvolta
