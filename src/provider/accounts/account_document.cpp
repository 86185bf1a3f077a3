#include "provider/accounts/account_document.h"

#include "provider/accounts/account_texts.h"
#include "provider/provider_error.h"
#include "provider/svn/repository_names.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <optional>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int kFormat = 1;
constexpr auto kFormatName = "format"_L1;
constexpr auto kUsers = "users"_L1;
constexpr auto kGroups = "groups"_L1;
constexpr auto kPermissions = "permissions"_L1;
constexpr auto kRepository = "repository"_L1;
constexpr auto kPath = "path"_L1;
constexpr auto kEntries = "entries"_L1;
constexpr auto kAccess = "access"_L1;

struct KindName {
    PrincipalKind kind;
    QLatin1StringView name;
};
constexpr std::array kKindNames{
    KindName{PrincipalKind::Everyone, "everyone"_L1},
    KindName{PrincipalKind::User, "user"_L1},
    KindName{PrincipalKind::Group, "group"_L1},
    KindName{PrincipalKind::SystemAccount, "sid"_L1},
};

QJsonObject WriteAccount(const Principal& account)
{
    const auto named = std::find_if(kKindNames.begin(), kKindNames.end(),
                                    [&account](const KindName& each) { return each.kind == account.kind; });
    return {{named->name, account.name}};
}

// Reads one document; what is wrong ends it with the ProviderError.
class Reader
{
public:
    explicit Reader(const QString& path)
        : m_path(path)
    {
    }

    AccountModel Read(const QByteArray& content) const
    {
        QJsonParseError error{};
        const QJsonObject root = QJsonDocument::fromJson(content, &error).object();
        if (error.error != QJsonParseError::NoError)
            Refuse(accounttexts::kNotJson.arg(QString::number(error.offset), error.errorString()));
        const int format = root.value(kFormatName).toInt();
        if (format > kFormat)
            throw ProviderError(WBEM_E_FAILED, accounttexts::kAccountsNewer.arg(m_path));
        if (format != kFormat)
            RefuseRecord(kFormatName);
        AccountModel model;
        try {
            ReadUsers(root.value(kUsers).toObject(), model);
            ReadGroups(root.value(kGroups).toObject(), model);
            ReadPermissions(root.value(kPermissions).toArray(), model);
        } catch (const ProviderError& refusal) {
            if (refusal.Description().contains(m_path))
                throw;
            Refuse(refusal.Description());
        }
        return model;
    }

private:
    void ReadUsers(const QJsonObject& users, AccountModel& model) const
    {
        for (auto user = users.begin(); user != users.end(); ++user) {
            const QByteArray hash = user->toString().toLatin1();
            if (hash.isEmpty() || hash.contains(':') || hash.contains('\n'))
                RefuseRecord(user.key());
            model.AddUser(user.key(), hash);
        }
    }

    void ReadGroups(const QJsonObject& groups, AccountModel& model) const
    {
        // All of them first: they hold each other.
        for (const QString& name : groups.keys())
            model.AddGroup(name, {});
        for (auto group = groups.begin(); group != groups.end(); ++group) {
            AccountModel::Members members;
            for (const QJsonValueConstRef member : group->toArray()) {
                const Principal account = ReadAccount(member.toObject());
                if (account.kind != PrincipalKind::User && account.kind != PrincipalKind::Group)
                    RefuseRecord(group.key());
                members.append(account);
            }
            model.SetGroupMembers(group.key(), members);
        }
    }

    void ReadPermissions(const QJsonArray& places, AccountModel& model) const
    {
        for (const QJsonValueConstRef each : places) {
            const QJsonObject record = each.toObject();
            const SecuredPlace place{record.value(kRepository).toString(), record.value(kPath).toString()};
            PermissionList permissions;
            for (const QJsonValueConstRef value : record.value(kEntries).toArray()) {
                const QJsonObject entry = value.toObject();
                const int access = entry.value(kAccess).toInt(-1);
                permissions.append({ReadAccount(entry), static_cast<Access>(access)});
            }
            if (permissions.isEmpty() || model.HasPermissions(place) || place.IsServer() != place.path.isEmpty())
                RefuseRecord(DescribePlace(place));
            model.SetPermissions(place, permissions);
        }
    }

    Principal ReadAccount(const QJsonObject& record) const
    {
        for (const KindName& each : kKindNames) {
            const QJsonValue name = record.value(each.name);
            if (name.isString() && name.toString().isEmpty() == (each.kind == PrincipalKind::Everyone))
                return {each.kind, name.toString()};
        }
        RefuseRecord(QString::fromUtf8(QJsonDocument(record).toJson(QJsonDocument::Compact)));
    }

    [[noreturn]] void RefuseRecord(const QString& record) const
    {
        Refuse(accounttexts::kBadRecord.arg(RepositoryNames::Show(record)));
    }
    [[noreturn]] void Refuse(const QString& reason) const
    {
        throw ProviderError(WBEM_E_FAILED, accounttexts::kAccountsDamaged.arg(m_path, reason));
    }

    const QString& m_path;
};

} // namespace

QByteArray AccountDocument::Write(const AccountModel& model)
{
    QJsonObject users;
    for (auto user = model.PasswordHashes().cbegin(); user != model.PasswordHashes().cend(); ++user)
        users.insert(user.key(), QString::fromLatin1(*user));
    QJsonObject groups;
    for (const QString& name : model.Groups()) {
        QJsonArray members;
        for (const Principal& member : model.GroupMembers(name))
            members.append(WriteAccount(member));
        groups.insert(name, members);
    }
    QJsonArray places;
    const QMap<SecuredPlace, PermissionList>& permissions = model.AllPermissions();
    for (auto place = permissions.cbegin(); place != permissions.cend(); ++place) {
        QJsonArray entries;
        for (const Permission& permission : *place) {
            QJsonObject entry = WriteAccount(permission.account);
            entry.insert(kAccess, static_cast<int>(permission.access));
            entries.append(entry);
        }
        places.append(
            QJsonObject{{kRepository, place.key().repository}, {kPath, place.key().path}, {kEntries, entries}});
    }
    return QJsonDocument(
               QJsonObject{{kFormatName, kFormat}, {kUsers, users}, {kGroups, groups}, {kPermissions, places}})
        .toJson(QJsonDocument::Compact);
}

AccountModel AccountDocument::Read(const QByteArray& content, const QString& path)
{
    return Reader(path).Read(content);
}

} // namespace quenvolta
