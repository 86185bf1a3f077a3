#pragma once

#include "provider/management_class.h"
#include "provider/standard/account_database.h"
#include "provider/standard/directory_entry.h"

#include <memory>

namespace quenvolta
{

class SearchResults;

/// Quenvolta_Directory: finds accounts and computers by a part of their names, and accounts by their identifiers. A
/// search looks at everything that the system lists, and at the accounts of exactly the name, which a system may know
/// without listing them; it answers with a bounded number of objects, within bounded time.
class DirectoryClass final : public ManagementClass
{
public:
    DirectoryClass(std::unique_ptr<AccountDatabase> users, std::unique_ptr<AccountDatabase> groups);

private:
    void Search(MethodCall& call);
    void Resolve(MethodCall& call);
    /// False when the time was over before the end.
    bool SearchAccounts(const QString& text, const QStringList& kinds, const CancelCheck& cancel,
                        SearchResults* results) const;
    std::optional<DirectoryEntry> Find(const QString& sid) const;

    std::unique_ptr<AccountDatabase> m_users;
    std::unique_ptr<AccountDatabase> m_groups;
};

} // namespace quenvolta
