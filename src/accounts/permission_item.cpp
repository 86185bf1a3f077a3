#include "accounts/permission_item.h"

#include "accounts/security_page_host.h"
#include "ui/string_table.h"

#include <QHash>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

TreePosition ParentOf(const TreePosition& path)
{
    if (path.path == u"/")
        return {};
    const qsizetype end = path.path.lastIndexOf(u'/');
    return {path.repositoryName, end > 0 ? path.path.first(end) : u"/"_s};
}

class Loader
{
public:
    explicit Loader(IcSecurityPageHost& host)
        : m_host(host)
    {
    }

    QList<PermissionItem> Load()
    {
        TreePosition path = m_host.GetPath();
        for (const PermissionEntry& entry : m_host.GetPermissions(path)) {
            std::optional<AccessLevel>& level = ItemOf(entry.account).explicitLevel;
            if (!level)
                level = entry.accessLevel;
        }
        while (!path.repositoryName.isEmpty()) {
            path = ParentOf(path);
            for (const PermissionEntry& entry : m_host.GetPermissions(path)) {
                std::optional<InheritedLevel>& inherited = ItemOf(entry.account).inherited;
                if (!inherited) // else something nearer names the account
                    inherited = {entry.accessLevel, path};
            }
        }
        return m_items;
    }

private:
    PermissionItem& ItemOf(const Account& account)
    {
        const auto known = m_places.constFind(account);
        if (known != m_places.cend())
            return m_items[*known];
        m_places.insert(account, m_items.size());
        m_items.append({.account = account});
        return m_items.last();
    }

    IcSecurityPageHost& m_host;
    QList<PermissionItem> m_items;
    QHash<Account, qsizetype> m_places;
};

} // namespace

QStringList AccountNames(IcSecurityPageHost& host, const QList<Account>& accounts)
{
    QStringList sids;
    for (const Account& account : accounts) {
        if (account.kind == AccountKind::WindowsAccount)
            sids.append(account.name);
    }
    const QStringList windowsNames = sids.isEmpty() ? QStringList() : host.GetWindowsAccountNames(sids);
    QStringList names;
    qsizetype next = 0;
    for (const Account& account : accounts) {
        switch (account.kind) {
        case AccountKind::Everyone:
            names.append(LoadString(StringId::kEveryone));
            break;
        case AccountKind::WindowsAccount:
            names.append(windowsNames.value(next++, account.name));
            break;
        case AccountKind::User:
        case AccountKind::Group:
            names.append(account.name);
            break;
        }
    }
    return names;
}

QList<PermissionItem> LoadPermissionItems(IcSecurityPageHost& host)
{
    QList<PermissionItem> items = Loader(host).Load();
    QList<Account> accounts;
    for (const PermissionItem& item : items)
        accounts.append(item.account);
    const QStringList names = AccountNames(host, accounts);
    for (qsizetype i = 0; i < items.size(); ++i)
        items[i].name = names[i];
    return items;
}

} // namespace quenvolta
