#include "provider/classes/repository_class.h"

#include "foundation/exception.h"
#include "provider/classes/repository_entry_row.h"
#include "provider/data_lock.h"
#include "provider/provider_error.h"
#include "provider/roles/role_lists.h"
#include "provider/roles/role_methods.h"
#include "provider/svn/svn_log.h"

#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// Folders are named from the repository's root, with or without the slash before them.
QStringList FoldersOf(const MethodCall& call)
{
    QStringList folders = call.StringArray(u"Folders");
    for (QString& folder : folders) {
        if (!folder.isEmpty() && !folder.startsWith(u'/'))
            folder.prepend(u'/');
    }
    return folders;
}

CommitNote NoteOf(const MethodCall& call)
{
    CommitNote note;
    note.message = call.String(u"Message");
    note.requestId = call.Context().requestId.toString();
    note.repeated = call.Context().repeated;
    return note;
}

// Tidies up after a change that stands: a failure is no failure of the change, and harms nothing, for permissions of
// what isn't there are removed again before something of that name is made.
template <typename Tidy>
void TidyUp(Tidy tidy)
{
    try {
        tidy();
    } catch (const ProviderError& error) {
        qCWarning(logSvn) << error.Description();
    } catch (const Exception& failure) {
        qCWarning(logSvn) << failure.GetMessage();
    }
}

// What the contract calls a standalone repository.
constexpr std::uint32_t kFsfsType = 0;

} // namespace

RepositoryClass::RepositoryClass(DataFolder& data, std::shared_ptr<AccountStore> accounts)
    : m_data(data)
    , m_settings(data.Settings())
    , m_accounts(std::move(accounts))
{
    Handle(u"Create"_s, Effect::Changes, [this](MethodCall& call) { Create(call); });
    Handle(u"Rename"_s, Effect::Changes, [this](MethodCall& call) { Rename(call); });
    Handle(u"Delete"_s, Effect::Changes, [this](MethodCall& call) { Delete(call); });
    Handle(u"GetChildren"_s, Effect::Reads, [this](MethodCall& call) { GetChildren(call); });
    Handle(u"CreateFolders"_s, Effect::Changes, [this](MethodCall& call) { CreateFolders(call); });
    Handle(u"DeleteFolders"_s, Effect::Changes, [this](MethodCall& call) { DeleteFolders(call); });
    Handle(u"HasCapability"_s, Effect::Reads, [this](MethodCall& call) { HasCapability(call); });
    Handle(u"Upgrade"_s, Effect::Changes, [this](MethodCall& call) { Upgrade(call); });
    rolemethods::AddToRepository(*this, data);
}

std::optional<InstanceRow> RepositoryClass::Get(const ClassDefinitionPtr& definition, const Keys& keys, CallContext&)
{
    const QString name = keys.value(u"Name"_s);
    return Row(definition, Store().Read(name), m_settings.RepositoriesUrl(), *m_accounts->Read());
}

void RepositoryClass::Enumerate(const ClassDefinitionPtr& definition, CallContext& context)
{
    const QString repositoriesUrl = m_settings.RepositoriesUrl();
    const std::shared_ptr<const AccountModel> accounts = m_accounts->Read();
    Store().Visit(
        [&](const RepositoryRecord& record) {
            context.rows.AddInstance(Row(definition, record, repositoriesUrl, *accounts));
        },
        context.cancel);
}

InstanceRow RepositoryClass::Row(const ClassDefinitionPtr& definition, const RepositoryRecord& record,
                                 const QString& repositoriesUrl, const AccountModel& accounts) const
{
    InstanceRow row(definition);
    row.Set(u"Name", record.name)
        .Set(u"URL", repositoriesUrl + EncodeForUrl(record.name))
        .Set(u"InheritedOnlyPermissions", !accounts.HasPermissions({record.name, u"/"_s}));
    // One that can't be opened is listed with what is known of it.
    if (record.youngestRevision)
        row.Set(u"Type", kFsfsType).Set(u"TotalRevisions", *record.youngestRevision);
    return row;
}

void RepositoryClass::Create(MethodCall& call)
{
    const QString name = call.String(u"Name");
    const DataLock lock(m_data.Path(), call.Context().cancel);
    const RepositoryStore store = Store();
    if (!store.Exists(name))
        Forget(lock, name); // what something left of one that was removed without the server's knowing
    store.Create(name, call.Context().requestId.toString(), call.Context().repeated);
}

void RepositoryClass::Forget(const DataLock& lock, const QString& name)
{
    m_accounts->ForgetRepository(lock, name);
    RoleLists(m_data.Settings()).Forget(name);
}

void RepositoryClass::Rename(MethodCall& call)
{
    const QString oldName = call.String(u"OldName");
    const QString newName = call.String(u"NewName");
    const DataLock lock(m_data.Path(), call.Context().cancel);
    const RepositoryStore store = Store();
    RoleLists roles(m_data.Settings());
    const bool canBegin = store.Exists(oldName) && !store.Exists(newName);
    // The process that began this may have ended after the rename.
    const bool isDone = call.Context().repeated && !store.Exists(oldName) && store.Exists(newName);
    if (canBegin) {
        m_accounts->CopyRepository(lock, oldName, newName);
        roles.Copy(oldName, newName);
    }
    try {
        if (!isDone)
            store.Rename(oldName, newName);
    } catch (...) {
        if (canBegin)
            TidyUp([&] { Forget(lock, newName); });
        throw;
    }
    TidyUp([&] { Forget(lock, oldName); });
}

void RepositoryClass::Delete(MethodCall& call)
{
    const QString name = call.String(u"Name");
    const DataLock lock(m_data.Path(), call.Context().cancel);
    const RepositoryStore store = Store();
    try {
        // The process that began this may have ended after the repository had disappeared.
        if (!call.Context().repeated || store.Exists(name))
            store.Delete(name);
    } catch (...) {
        if (!store.Exists(name)) // some of its files remain
            TidyUp([&] { Forget(lock, name); });
        throw;
    }
    TidyUp([&] { Forget(lock, name); });
}

void RepositoryClass::GetChildren(MethodCall& call)
{
    const QString name = call.Key(u"Name"_s);
    const ClassDefinitionPtr definition = call.Context().classes.Find(u"Quenvolta_RepositoryEntry"_s);
    const QString parameter = u"Children"_s;
    const std::shared_ptr<const AccountModel> accounts = m_accounts->Read();
    RepositoryEntryRow row(definition, name, m_settings.RepositoriesUrl() + EncodeForUrl(name), *accounts);
    Store().VisitChildren(name, call.String(u"Path"),
                          [&](const RepositoryEntry& entry) { call.ReturnElement(parameter, row.Of(entry)); });
}

void RepositoryClass::CreateFolders(MethodCall& call)
{
    Store().CreateFolders(call.Key(u"Name"_s), FoldersOf(call), NoteOf(call), call.Context().cancel);
}

void RepositoryClass::DeleteFolders(MethodCall& call)
{
    const QString name = call.Key(u"Name"_s);
    const QStringList folders = FoldersOf(call);
    Store().DeleteFolders(name, folders, NoteOf(call), call.Context().cancel);
    TidyUp([&] { m_accounts->ForgetPaths(name, folders, {}); });
}

void RepositoryClass::HasCapability(MethodCall& call)
{
    call.Return(u"ReturnValue", Store().HasCapability(call.Key(u"Name"_s), call.String(u"Capability")));
}

void RepositoryClass::Upgrade(MethodCall& call)
{
    const DataLock lock(m_data.Path(), call.Context().cancel);
    Store().Upgrade(call.Key(u"Name"_s));
}

} // namespace quenvolta
