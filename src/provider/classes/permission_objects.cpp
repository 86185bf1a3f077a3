#include "provider/classes/permission_objects.h"

#include "platform/wbem/object_path.h"
#include "provider/accounts/account_model.h"
#include "provider/accounts/account_texts.h"
#include "provider/provider_error.h"
#include "provider/svn/repository_names.h"

#include <algorithm>
#include <array>
#include <optional>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

struct AccountClassName {
    PrincipalKind kind;
    QLatin1StringView className;
    QLatin1StringView property;
};
constexpr std::array kAccountClasses{
    AccountClassName{PrincipalKind::User, "Quenvolta_User"_L1, "Name"_L1},
    AccountClassName{PrincipalKind::Group, "Quenvolta_Group"_L1, "Name"_L1},
    AccountClassName{PrincipalKind::Everyone, "Quenvolta_Everyone"_L1, "Name"_L1},
    AccountClassName{PrincipalKind::SystemAccount, "Quenvolta_WindowsAccount"_L1, "SID"_L1},
};

template <typename T>
std::optional<T> Read(const WbemObjectPtr& object, const QString& property)
{
    Variant value;
    if (!object || Failed(object->Get(property, &value, nullptr)))
        return std::nullopt;
    const T* typed = std::get_if<T>(&value);
    return typed ? std::optional<T>(*typed) : std::nullopt;
}

Principal ReadAccount(const WbemObjectPtr& object, const SecuredPlace& place)
{
    for (const AccountClassName& each : kAccountClasses) {
        if (!object || object->InheritsFrom(each.className) != S_OK)
            continue;
        if (each.kind == PrincipalKind::Everyone)
            return {each.kind, {}};
        if (const std::optional<QString> name = Read<QString>(object, each.property))
            return {each.kind, *name};
    }
    throw ProviderError(WBEM_E_INVALID_PARAMETER, accounttexts::kNoAccount.arg(DescribePlace(place)));
}

Access ReadAccess(const WbemObjectPtr& object, const SecuredPlace& place)
{
    if (const std::optional<std::uint32_t> access = Read<std::uint32_t>(object, u"AccessLevel"_s))
        return static_cast<Access>(*access); // the accounts refuse a number that is none
    throw ProviderError(WBEM_E_INVALID_PARAMETER, accounttexts::kNoAccount.arg(DescribePlace(place)));
}

// One object's path: its class, and the values of its keys by name.
struct ParsedPath {
    QString className;
    QHash<QString, QString> keys;
};

std::optional<ParsedPath> Parse(const QString& text)
{
    const std::shared_ptr<IWbemPath> path = CreateWbemPath();
    ParsedPath parsed;
    QList<PathKey> keys;
    if (Failed(path->SetText(text)))
        return std::nullopt;
    path->GetClassName(&parsed.className);
    path->GetKeys(&keys);
    for (const PathKey& key : std::as_const(keys))
        parsed.keys.insert(key.name.toLower(), key.value);
    return parsed;
}

bool IsClass(const ParsedPath& path, QLatin1StringView className, const QStringList& keys)
{
    return path.className.compare(className, Qt::CaseInsensitive) == 0 && path.keys.size() == keys.size() &&
           std::all_of(keys.begin(), keys.end(), [&path](const QString& key) { return path.keys.contains(key); });
}

} // namespace

PermissionObjects::PermissionObjects(const ClassTable& classes)
    : m_classes(classes)
    , m_entry(classes.Find(u"Quenvolta_PermissionEntry"_s))
{
}

InstanceRow PermissionObjects::ToRow(const Permission& permission) const
{
    InstanceRow row(m_entry);
    row.Set(u"Account", ToRow(permission.account).ToObject())
        .Set(u"AccessLevel", static_cast<std::uint32_t>(permission.access));
    return row;
}

InstanceRow PermissionObjects::ToRow(const Principal& account) const
{
    const auto found = std::find_if(kAccountClasses.begin(), kAccountClasses.end(),
                                    [&account](const AccountClassName& each) { return each.kind == account.kind; });
    InstanceRow row(m_classes.Find(found->className));
    row.Set(QString(found->property),
            account.kind == PrincipalKind::Everyone ? accounttexts::kEveryone.Whole() : account.name);
    return row;
}

PermissionList PermissionObjects::FromObjects(const QList<WbemObjectPtr>& objects, const SecuredPlace& place)
{
    PermissionList permissions;
    for (const WbemObjectPtr& object : objects) {
        const WbemObjectPtr account = Read<WbemObjectPtr>(object, u"Account"_s).value_or(nullptr);
        permissions.append({ReadAccount(account, place), ReadAccess(object, place)});
    }
    return permissions;
}

Principal PermissionObjects::MemberFromPath(const QString& path, const QString& group)
{
    if (const std::optional<ParsedPath> parsed = Parse(path)) {
        const QStringList keys{u"name"_s};
        if (IsClass(*parsed, "Quenvolta_User"_L1, keys))
            return {PrincipalKind::User, parsed->keys.value(keys.first())};
        if (IsClass(*parsed, "Quenvolta_Group"_L1, keys))
            return {PrincipalKind::Group, parsed->keys.value(keys.first())};
    }
    throw ProviderError(WBEM_E_INVALID_PARAMETER, accounttexts::kMemberIsNoAccount.arg(RepositoryNames::Show(group),
                                                                                       RepositoryNames::Show(path)));
}

SecuredPlace PermissionObjects::PlaceFromPath(const QString& path)
{
    if (const std::optional<ParsedPath> parsed = Parse(path)) {
        const QHash<QString, QString>& keys = parsed->keys;
        if (IsClass(*parsed, "Quenvolta_Service"_L1, {u"name"_s}) &&
            keys.value(u"name"_s).compare("QuenvoltaServer"_L1, Qt::CaseInsensitive) == 0)
            return {};
        if (IsClass(*parsed, "Quenvolta_Repository"_L1, {u"name"_s}) && !keys.value(u"name"_s).isEmpty())
            return {keys.value(u"name"_s), u"/"_s};
        if (IsClass(*parsed, "Quenvolta_RepositoryEntry"_L1, {u"repositoryname"_s, u"path"_s}) &&
            !keys.value(u"repositoryname"_s).isEmpty())
            return {keys.value(u"repositoryname"_s), keys.value(u"path"_s)};
    }
    throw ProviderError(WBEM_E_INVALID_PARAMETER, accounttexts::kNotSecured.arg(RepositoryNames::Show(path)));
}

} // namespace quenvolta
