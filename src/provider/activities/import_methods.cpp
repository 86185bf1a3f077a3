#include "provider/activities/import_methods.h"

#include "provider/accounts/account_store.h"
#include "provider/activities/activity_texts.h"
#include "provider/activities/import_source.h"
#include "provider/activities/repository_import.h"
#include "provider/data_lock.h"
#include "provider/provider_error.h"
#include "provider/roles/role_lists.h"
#include "provider/server_settings_reader.h"
#include "provider/svn/durable_files.h"
#include "provider/svn/repository_store.h"

#include <optional>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qint32 kHotCopyMode = 0;
constexpr qint32 kDumpMode = 1;

void Import(MethodCall& call, DataFolder& data)
{
    const QString name = call.String(u"Name");
    const QString path = call.String(u"ImportPath");
    const qint32 mode = call.Optional<std::int32_t>(u"ImportMode").value_or(kHotCopyMode);
    if (mode != kHotCopyMode && mode != kDumpMode)
        throw ProviderError(WBEM_E_INVALID_PARAMETER, replies::kUnknownImportMode.arg(mode));
    const CancelCheck& cancel = call.Context().cancel;
    const RepositoryStore store(ServerSettingsReader(data.Settings()).RepositoriesRoot());

    std::optional<DataLock> lock;
    RepositoryStore::Plan plan;
    plan.fill = [&](const QString& folder) {
        const ImportSource source(path);
        if (mode == kDumpMode) {
            RepositoryImport::Load(source, folder, cancel);
        } else {
            source.RepositoryKind(); // refuses what is none
            source.RequireApartFrom(store.Root());
            RepositoryImport::HotCopy(source, folder, cancel);
        }
        DurableFiles::SyncFileSystem(folder);
    };
    // Only the last step is a change that others could meet. After hours of work it waits for its turn.
    plan.beforeMove = [&] {
        lock.emplace(data.Path(), cancel, DataLock::Patience::Endless);
        if (store.Exists(name))
            return;
        // Of a repository that had the name before.
        AccountStore(data).ForgetRepository(*lock, name);
        RoleLists(data.Settings()).Forget(name);
    };
    plan.cancel = cancel;
    plan.requestId = call.Context().requestId.toString();
    plan.repeated = call.Context().repeated;
    store.Build(name, plan);
}

} // namespace

void ImportMethods::AddTo(ManagementClass& repositories, DataFolder& data)
{
    repositories.Handle(u"ImportRepository"_s, ManagementClass::Effect::Activity,
                        [&data](MethodCall& call) { Import(call, data); });
    repositories.Handle(u"GetImportSourceType"_s, ManagementClass::Effect::Reads, [](MethodCall& call) {
        call.Return(u"ReturnValue", ImportSource(call.String(u"Path")).RepositoryKind());
    });
}

} // namespace quenvolta
