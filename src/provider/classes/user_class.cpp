#include "provider/classes/user_class.h"

#include "provider/accounts/account_names.h"

#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

UserClass::UserClass(std::shared_ptr<AccountStore> accounts)
    : m_accounts(std::move(accounts))
{
    Handle(u"Create"_s, Effect::Changes, [this](MethodCall& call) { Create(call); });
    Handle(u"Delete"_s, Effect::Changes, [this](MethodCall& call) { Delete(call); });
    Handle(u"SetPassword"_s, Effect::Changes, [this](MethodCall& call) { SetPassword(call); });
}

std::optional<InstanceRow> UserClass::Get(const ClassDefinitionPtr& definition, const Keys& keys, CallContext&)
{
    const QString name = keys.value(u"Name"_s);
    if (!m_accounts->Read()->HasUser(name))
        return std::nullopt;
    return InstanceRow(definition).Set(u"Name", name);
}

void UserClass::Enumerate(const ClassDefinitionPtr& definition, CallContext& context)
{
    for (const QString& name : m_accounts->Read()->Users())
        context.rows.AddInstance(InstanceRow(definition).Set(u"Name", name));
}

void UserClass::Create(MethodCall& call)
{
    const QString name = call.String(u"Name");
    const QString password = call.String(u"Password");
    AccountNames::CheckUser(name);
    // Before the lock is taken: it takes a while, and others wait for it.
    const QByteArray hash = m_accounts->HashPassword(name, password);
    m_accounts->Change(call.Context().cancel, [&](AccountModel& model) {
        const bool isDone =
            call.Context().repeated && model.HasUser(name) && PasswordHash::Matches(password, model.PasswordHash(name));
        if (!isDone)
            model.AddUser(name, hash);
    });
}

void UserClass::Delete(MethodCall& call)
{
    const QString name = call.String(u"Name");
    m_accounts->Change(call.Context().cancel, [&](AccountModel& model) {
        if (!call.Context().repeated || model.HasUser(name))
            model.RemoveUser(name);
    });
}

void UserClass::SetPassword(MethodCall& call)
{
    const QString name = call.Key(u"Name"_s);
    m_accounts->Read()->PasswordHash(name); // an unknown user shall not cost the time
    const QByteArray hash = m_accounts->HashPassword(name, call.String(u"Password"));
    m_accounts->Change(call.Context().cancel, [&](AccountModel& model) { model.SetPasswordHash(name, hash); });
}

} // namespace quenvolta
