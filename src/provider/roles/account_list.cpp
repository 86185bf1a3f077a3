#include "provider/roles/account_list.h"

#include "foundation/exception.h"
#include "foundation/sid.h"
#include "provider/provider_error.h"
#include "provider/roles/role_texts.h"
#include "provider/svn/repository_names.h"

namespace quenvolta::accountlist
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype kMostAccounts = 10'000;

QString WindowsAccountClass()
{
    return u"Quenvolta_WindowsAccount"_s;
}

[[noreturn]] void Refuse(const QString& description)
{
    throw ProviderError(WBEM_E_INVALID_PARAMETER, description);
}

QString IdentifierOf(const WbemObjectPtr& object)
{
    Variant value;
    if (!object || object->InheritsFrom(WindowsAccountClass()) != S_OK || Failed(object->Get(u"SID"_s, &value)))
        Refuse(roletexts::kNotAnAccount.Whole());
    const QString* text = std::get_if<QString>(&value);
    QString identifier = text ? *text : QString();
    try {
        StringToSid(identifier);
    } catch (const Exception&) {
        Refuse(roletexts::kInvalidSid.arg(RepositoryNames::Show(identifier)));
    }
    return identifier;
}

} // namespace

QStringList FromParameter(const MethodCall& call, QStringView name)
{
    const std::optional<QList<WbemObjectPtr>> objects = call.Optional<QList<WbemObjectPtr>>(name);
    if (!objects)
        throw ProviderError(WBEM_E_INVALID_METHOD_PARAMETERS, roletexts::kListMissing.arg(name.toString()));
    if (objects->size() > kMostAccounts)
        Refuse(roletexts::kTooManyAccounts.arg(QString::number(kMostAccounts)));
    QStringList identifiers;
    identifiers.reserve(objects->size());
    for (const WbemObjectPtr& object : *objects)
        identifiers.append(IdentifierOf(object));
    return identifiers;
}

void Return(MethodCall& call, const QString& name, const QStringList& identifiers)
{
    const ClassDefinitionPtr definition = call.Context().classes.Find(WindowsAccountClass());
    for (const QString& identifier : identifiers)
        call.ReturnElement(name, InstanceRow(definition).Set(u"SID", identifier));
}

} // namespace quenvolta::accountlist
