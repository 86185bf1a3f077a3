#include "provider/hooks/hook_methods.h"

#include "provider/data_lock.h"
#include "provider/hooks/repository_hooks.h"
#include "provider/server_settings_reader.h"
#include "provider/svn/repository_store.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

RepositoryHooks HooksOf(const MethodCall& call, DataFolder& data)
{
    const QString name = call.Key(u"Name"_s);
    const RepositoryStore store(ServerSettingsReader(data.Settings()).RepositoriesRoot());
    return RepositoryHooks(store.Root(), store.RequireFolder(name), name);
}

void GetHook(MethodCall& call, DataFolder& data)
{
    const std::optional<QString> text = HooksOf(call, data).Read(call.Int32(u"Kind"));
    call.Return(u"Hook", text.value_or(QString()));
    call.Return(u"ReturnValue", text.has_value());
}

void SetHook(MethodCall& call, DataFolder& data)
{
    const DataLock lock(data.Path(), call.Context().cancel);
    HooksOf(call, data).Write(call.Int32(u"Kind"), call.String(u"Hook"));
}

void DeleteHook(MethodCall& call, DataFolder& data)
{
    const DataLock lock(data.Path(), call.Context().cancel);
    HooksOf(call, data).Delete(call.Int32(u"Kind"));
}

} // namespace

void HookMethods::AddTo(ManagementClass& repositories, DataFolder& data)
{
    using Effect = ManagementClass::Effect;
    repositories.Handle(u"GetHook"_s, Effect::Reads, [&data](MethodCall& call) { GetHook(call, data); });
    repositories.Handle(u"SetHook"_s, Effect::Changes, [&data](MethodCall& call) { SetHook(call, data); });
    repositories.Handle(u"DeleteHook"_s, Effect::Changes, [&data](MethodCall& call) { DeleteHook(call, data); });
}

} // namespace quenvolta
