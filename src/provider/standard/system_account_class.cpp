#include "provider/standard/system_account_class.h"

#include <QSysInfo>

#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

InstanceRow Row(const ClassDefinitionPtr& definition, const QString& domain, const DatabaseAccount& account)
{
    InstanceRow row(definition);
    row.Set(u"Domain", domain).Set(u"Name", account.name).Set(u"SID", account.sid).Set(u"FullName", account.fullName);
    return row;
}

} // namespace

SystemAccountClass::SystemAccountClass(std::unique_ptr<AccountDatabase> accounts)
    : m_accounts(std::move(accounts))
{
}

std::optional<InstanceRow> SystemAccountClass::Get(const ClassDefinitionPtr& definition, const Keys& keys, CallContext&)
{
    const QString domain = QSysInfo::machineHostName();
    if (keys.value(u"Domain"_s).compare(domain, Qt::CaseInsensitive) != 0)
        return std::nullopt;
    const std::optional<DatabaseAccount> account = m_accounts->Find(keys.value(u"Name"_s));
    return account ? std::optional(Row(definition, domain, *account)) : std::nullopt;
}

void SystemAccountClass::Enumerate(const ClassDefinitionPtr& definition, CallContext& context)
{
    const QString domain = QSysInfo::machineHostName();
    m_accounts->Visit([&](const DatabaseAccount& account) {
        ThrowIfCancelled(context.cancel);
        context.rows.AddInstance(Row(definition, domain, account));
    });
}

} // namespace quenvolta
