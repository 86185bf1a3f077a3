#include "platform/wbem/object_path.h"
#include "support/stand_in_server.h"

#include <algorithm>

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

namespace
{

const QString kRepository = u"Quenvolta_Repository"_s;

HRESULT Refuse(const StandInServer& server, HRESULT code, const QString& description)
{
    SetErrorInfo(server.ExtendedError(description));
    return code;
}

// The account that an object of one of the four classes stands for.
StandInPermission ToPermission(const WbemObjectPtr& entry)
{
    Variant account;
    Variant level;
    Variant className;
    Variant name;
    entry->Get(u"Account"_s, &account);
    entry->Get(u"AccessLevel"_s, &level);
    const WbemObjectPtr object = std::get<WbemObjectPtr>(account);
    object->Get(u"__CLASS"_s, &className);
    if (Failed(object->Get(u"Name"_s, &name)))
        object->Get(u"SID"_s, &name);
    return {std::get<QString>(className), std::get<QString>(name), std::get<std::uint32_t>(level)};
}

QList<StandInPermission> ToPermissions(const QList<WbemObjectPtr>& entries)
{
    QList<StandInPermission> permissions;
    std::transform(entries.cbegin(), entries.cend(), std::back_inserter(permissions), ToPermission);
    return permissions;
}

// Repository and path of the object that a path names.
std::pair<QString, QString> SecuredPlace(const QString& objectPath)
{
    const std::shared_ptr<IWbemPath> path = CreateWbemPath();
    QString className;
    QList<PathKey> keys;
    path->SetText(objectPath);
    path->GetClassName(&className);
    path->GetKeys(&keys);
    if (className == kRepository)
        return {keys.value(0).value, u"/"_s};
    if (className == u"Quenvolta_RepositoryEntry")
        return {keys.value(0).value, keys.value(1).value};
    return {};
}

constexpr HRESULT kMembersHaveCycles = HResultFromWin32(1059);

StandInGroup* FindGroup(QList<StandInGroup>& groups, const QString& name)
{
    const auto found =
        std::find_if(groups.begin(), groups.end(), [&name](const StandInGroup& each) { return each.name == name; });
    return found == groups.end() ? nullptr : &*found;
}

// Whether a group with these members would be a member of itself.
bool HasCycle(QList<StandInGroup>& groups, const QString& name, QStringList paths)
{
    for (qsizetype i = 0; i < paths.size(); ++i) { // grows by the members of the groups that it holds
        const std::shared_ptr<IWbemPath> path = CreateWbemPath();
        QString className;
        QList<PathKey> keys;
        if (Failed(path->SetText(paths[i])) || Failed(path->GetClassName(&className)) || Failed(path->GetKeys(&keys)) ||
            className != u"Quenvolta_Group")
            continue;
        const QString member = keys.value(0).value;
        if (member == name)
            return true;
        if (const StandInGroup* group = FindGroup(groups, member)) {
            std::copy_if(group->members.cbegin(), group->members.cend(), std::back_inserter(paths),
                         [&paths](const QString& next) { return !paths.contains(next); });
        }
    }
    return false;
}

bool RemoveNamed(QList<StandInGroup>& groups, const QString& name)
{
    return groups.removeIf([&name](const StandInGroup& group) { return group.name == name; }) > 0;
}

} // namespace

QList<WbemObjectPtr> StandInServer::PermissionObjects(const std::pair<QString, QString>& target) const
{
    QList<WbemObjectPtr> objects;
    for (const StandInPermission& permission : data.permissions.value(target)) {
        const QString property = permission.accountClass == u"Quenvolta_WindowsAccount" ? u"SID"_s : u"Name"_s;
        const WbemObjectPtr account = Make(permission.accountClass, {{property, permission.name}});
        objects.append(
            Make(u"Quenvolta_PermissionEntry"_s, {{u"Account"_s, account}, {u"AccessLevel"_s, permission.level}}));
    }
    return objects;
}

HRESULT StandInServer::CreateRepository(MethodContext& call, StandInRepository repository)
{
    repository.name = call.Text(u"Name"_s);
    if (repository.name.isEmpty() || repository.name.contains(u'/'))
        return Refuse(*this, WBEM_E_INVALID_PARAMETER, u"The repository name is not valid."_s);
    if (data.FindRepository(repository.name))
        return Refuse(*this, WBEM_E_ALREADY_EXISTS, u"The repository already exists."_s);
    data.repositories.append(std::move(repository));
    return S_OK;
}

void StandInServer::AddRepositoryMethods()
{
    Handle(kRepository, u"Create"_s, [this](MethodContext& call) { return CreateRepository(call, {}); });
    Handle(kRepository, u"CreateQdfsMaster"_s,
           [this](MethodContext& call) { return CreateRepository(call, {.name = {}, .type = 1}); });
    Handle(kRepository, u"CreateQdfsSlave"_s, [this](MethodContext& call) {
        return CreateRepository(call, {.name = {},
                                       .type = 2,
                                       .masterServer = call.Text(u"MasterServer"_s),
                                       .masterRepository = call.Text(u"MasterRepository"_s)});
    });
    Handle(kRepository, u"Delete"_s, [this](MethodContext& call) {
        const QString name = call.Text(u"Name"_s);
        return data.repositories.removeIf([&name](const StandInRepository& each) { return each.name == name; }) > 0
                   ? S_OK
                   : WBEM_E_NOT_FOUND;
    });
    Handle(kRepository, u"Rename"_s, [this](MethodContext& call) {
        StandInRepository* repository = data.FindRepository(call.Text(u"OldName"_s));
        if (!repository)
            return WBEM_E_NOT_FOUND;
        if (data.FindRepository(call.Text(u"NewName"_s)))
            return Refuse(*this, WBEM_E_ALREADY_EXISTS, u"The repository already exists."_s);
        repository->name = call.Text(u"NewName"_s);
        return S_OK;
    });
    Handle(kRepository, u"TestQdfsConnection"_s, [](MethodContext&) { return S_OK; });
    Handle(kRepository, u"GetImportSourceType"_s,
           [this](MethodContext& call) { return call.out->Put(u"ReturnValue"_s, data.importSourceType); });
    Handle(kRepository, u"ImportRepository"_s, [this](MethodContext& call) { return CreateRepository(call, {}); });
    Handle(kRepository, u"ImportQdfsMaster"_s,
           [this](MethodContext& call) { return CreateRepository(call, {.name = {}, .type = 1}); });
    Handle(kRepository, u"ExportReplicationSeed"_s, [](MethodContext&) { return S_OK; });
    Handle(kRepository, u"CheckReplicationConsistency"_s, [](MethodContext&) { return S_OK; });
    Handle(kRepository, u"HasCapability"_s, [](MethodContext& call) {
        return call.out->Put(u"ReturnValue"_s, call.Text(u"Capability"_s) == u"mergeinfo");
    });
    Handle(kRepository, u"Upgrade"_s, [](MethodContext&) { return S_OK; });
    const auto convert = [this](std::uint32_t type) {
        return [this, type](MethodContext& call) {
            data.FindRepository(call.key)->type = type;
            return call.out->Put(u"ReturnValue"_s, 0U);
        };
    };
    Handle(kRepository, u"ConvertToFsfs"_s, convert(0));
    Handle(kRepository, u"ConvertToQdfs"_s, convert(1));
    Handle(kRepository, u"ChangeMasterTo"_s, [this](MethodContext& call) {
        StandInRepository* repository = data.FindRepository(call.key);
        repository->masterServer = call.Text(u"MasterServer"_s);
        repository->masterRepository = call.Text(u"MasterRepository"_s);
        return S_OK;
    });
}

void StandInServer::AddFolderMethods()
{
    Handle(kRepository, u"GetChildren"_s, [this](MethodContext& call) {
        const StandInRepository& repository = *data.FindRepository(call.key);
        const QString path = call.Text(u"Path"_s);
        if (path != u"/" && !repository.entries.value(path))
            return WBEM_E_NOT_FOUND;
        const QString prefix = path == u"/" ? path : QString(path + u'/');
        QList<WbemObjectPtr> children;
        for (auto entry = repository.entries.lowerBound(prefix);
             entry != repository.entries.cend() && entry.key().startsWith(prefix); ++entry) {
            if (!QStringView(entry.key()).sliced(prefix.size()).contains(u'/'))
                children.append(EntryObject(repository, entry.key()));
        }
        return call.out->Put(u"Children"_s, children);
    });
    Handle(kRepository, u"CreateFolders"_s, [this](MethodContext& call) {
        StandInRepository& repository = *data.FindRepository(call.key);
        for (const QString& folder : call.Texts(u"Folders"_s)) {
            const QString path = folder.startsWith(u'/') ? folder : QString(u'/' + folder);
            if (repository.entries.contains(path))
                return Refuse(*this, WBEM_E_ALREADY_EXISTS, u"The folder already exists."_s);
            repository.entries.insert(path, true);
        }
        repository.revisions = repository.revisions.value_or(0) + 1;
        return S_OK;
    });
    Handle(kRepository, u"DeleteFolders"_s, [this](MethodContext& call) {
        StandInRepository& repository = *data.FindRepository(call.key);
        for (const QString& path : call.Texts(u"Folders"_s)) {
            if (!repository.entries.contains(path))
                return WBEM_E_NOT_FOUND;
            repository.entries.removeIf([inside = QString(path + u'/'), path](const auto& entry) {
                return entry.key() == path || entry.key().startsWith(inside);
            });
        }
        repository.revisions = repository.revisions.value_or(0) + 1;
        return S_OK;
    });
}

void StandInServer::AddAccountMethods()
{
    const QString user = u"Quenvolta_User"_s;
    const QString group = u"Quenvolta_Group"_s;
    Handle(user, u"Create"_s, [this](MethodContext& call) {
        if (data.users.contains(call.Text(u"Name"_s)))
            return Refuse(*this, WBEM_E_ALREADY_EXISTS, u"The user already exists."_s);
        data.users.append(call.Text(u"Name"_s));
        return S_OK;
    });
    Handle(user, u"Delete"_s, [this](MethodContext& call) {
        return data.users.removeAll(call.Text(u"Name"_s)) > 0 ? S_OK : WBEM_E_NOT_FOUND;
    });
    Handle(user, u"SetPassword"_s, [](MethodContext&) { return S_OK; });
    Handle(group, u"Create"_s, [this](MethodContext& call) {
        const StandInGroup created{call.Text(u"Name"_s), call.Texts(u"Members"_s)};
        if (FindGroup(data.groups, created.name))
            return Refuse(*this, WBEM_E_ALREADY_EXISTS, u"The group already exists."_s);
        if (HasCycle(data.groups, created.name, created.members))
            return Refuse(*this, kMembersHaveCycles, u"The group would be a member of itself."_s);
        data.groups.append(created);
        return S_OK;
    });
    Handle(group, u"Delete"_s, [this](MethodContext& call) {
        return RemoveNamed(data.groups, call.Text(u"Name"_s)) ? S_OK : WBEM_E_NOT_FOUND;
    });
    Handle(group, u"SetMembers"_s, [this](MethodContext& call) {
        const QStringList members = call.Texts(u"Members"_s);
        if (HasCycle(data.groups, call.key, members))
            return Refuse(*this, kMembersHaveCycles, u"The group would be a member of itself."_s);
        FindGroup(data.groups, call.key)->members = members;
        return S_OK;
    });
    Handle(group, u"GetMembers"_s, [this](MethodContext& call) {
        QList<WbemObjectPtr> members;
        for (const QString& text : std::as_const(FindGroup(data.groups, call.key)->members)) {
            const std::shared_ptr<IWbemPath> path = CreateWbemPath();
            QString className;
            QList<PathKey> keys;
            if (Failed(path->SetText(text)) || Failed(path->GetClassName(&className)) || Failed(path->GetKeys(&keys)))
                return WBEM_E_INVALID_OBJECT_PATH;
            members.append(Make(className, {{keys.value(0).name, keys.value(0).value}}));
        }
        return call.out->Put(u"Members"_s, members);
    });
}

void StandInServer::AddPermissionMethods()
{
    Handle(kRepository, u"GetSecurity"_s, [this](MethodContext& call) {
        return call.out->Put(u"Permissions"_s, PermissionObjects({call.key, call.Text(u"Path"_s)}));
    });
    Handle(kRepository, u"SetSecurity"_s, [this](MethodContext& call) {
        data.permissions[{call.key, call.Text(u"Path"_s)}] = ToPermissions(call.Objects(u"Permissions"_s));
        return S_OK;
    });
    Handle(kRepository, u"GetGlobalSecurity"_s,
           [this](MethodContext& call) { return call.out->Put(u"Permissions"_s, PermissionObjects({})); });
    Handle(kRepository, u"SetGlobalSecurity"_s, [this](MethodContext& call) {
        data.permissions[{}] = ToPermissions(call.Objects(u"Permissions"_s));
        return S_OK;
    });
    Handle(u"Quenvolta_SecurityDescriptor"_s, u"SetSecurity"_s, [this](MethodContext& call) {
        data.permissions[SecuredPlace(call.Text(u"Object"_s))] = ToPermissions(call.Objects(u"Permissions"_s));
        return S_OK;
    });
}

} // namespace quenvolta::test
