#include "provider/classes/group_class.h"

#include "provider/classes/permission_objects.h"

#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

AccountModel::Members MembersOf(const MethodCall& call, const QString& group)
{
    AccountModel::Members members;
    for (const QString& path : call.StringArray(u"Members"))
        members.append(PermissionObjects::MemberFromPath(path, group));
    return members;
}

} // namespace

GroupClass::GroupClass(std::shared_ptr<AccountStore> accounts)
    : m_accounts(std::move(accounts))
{
    Handle(u"Create"_s, Effect::Changes, [this](MethodCall& call) { Create(call); });
    Handle(u"Delete"_s, Effect::Changes, [this](MethodCall& call) { Delete(call); });
    Handle(u"SetMembers"_s, Effect::Changes, [this](MethodCall& call) { SetMembers(call); });
    Handle(u"GetMembers"_s, Effect::Reads, [this](MethodCall& call) { GetMembers(call); });
}

std::optional<InstanceRow> GroupClass::Get(const ClassDefinitionPtr& definition, const Keys& keys, CallContext&)
{
    const QString name = keys.value(u"Name"_s);
    if (!m_accounts->Read()->HasGroup(name))
        return std::nullopt;
    return InstanceRow(definition).Set(u"Name", name);
}

void GroupClass::Enumerate(const ClassDefinitionPtr& definition, CallContext& context)
{
    for (const QString& name : m_accounts->Read()->Groups())
        context.rows.AddInstance(InstanceRow(definition).Set(u"Name", name));
}

void GroupClass::Create(MethodCall& call)
{
    const QString name = call.String(u"Name");
    const AccountModel::Members members = MembersOf(call, name);
    m_accounts->Change(call.Context().cancel, [&](AccountModel& model) {
        const bool isDone = call.Context().repeated && model.HasGroup(name) && model.GroupMembers(name) == members;
        if (!isDone)
            model.AddGroup(name, members);
    });
}

void GroupClass::Delete(MethodCall& call)
{
    const QString name = call.String(u"Name");
    m_accounts->Change(call.Context().cancel, [&](AccountModel& model) {
        if (!call.Context().repeated || model.HasGroup(name))
            model.RemoveGroup(name);
    });
}

void GroupClass::SetMembers(MethodCall& call)
{
    const QString name = call.Key(u"Name"_s);
    const AccountModel::Members members = MembersOf(call, name);
    m_accounts->Change(call.Context().cancel, [&](AccountModel& model) { model.SetGroupMembers(name, members); });
}

void GroupClass::GetMembers(MethodCall& call)
{
    const PermissionObjects objects(call.Context().classes);
    const QString parameter = u"Members"_s;
    for (const Principal& member : m_accounts->Read()->GroupMembers(call.Key(u"Name"_s)))
        call.ReturnElement(parameter, objects.ToRow(member));
}

} // namespace quenvolta
