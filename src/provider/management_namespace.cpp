#include "provider/management_namespace.h"

#include "platform/wbem/object_path.h"
#include "provider/provider_error.h"
#include "provider/provider_texts.h"
#include "provider/svn/repository_names.h"
#include "provider/unbuilt_methods.h"

#include <algorithm>
#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// The key that each named key of the path stands for; nothing when they aren't exactly the class's keys.
std::optional<ManagementClass::Keys> MatchKeys(const ClassDefinition& definition, const QList<PathKey>& given)
{
    const QStringList names = definition.Keys();
    if (given.size() != names.size())
        return std::nullopt;
    ManagementClass::Keys keys;
    for (const QString& name : names) {
        const auto found = std::find_if(given.cbegin(), given.cend(), [&name](const PathKey& key) {
            return key.name.compare(name, Qt::CaseInsensitive) == 0;
        });
        if (found == given.cend())
            return std::nullopt;
        keys.insert(name, found->value);
    }
    return keys;
}

// Brings the parameters that came to the method's own signature, so that nothing else reaches a handler.
WbemObject CheckParameters(const ClassDefinition& definition, const MethodDefinition& method, const WbemObjectPtr& in)
{
    WbemObject checked(method.in);
    QStringList names;
    if (in)
        in->GetNames(&names);
    for (const QString& name : std::as_const(names)) {
        Variant value;
        in->Get(name, &value, nullptr);
        const HRESULT code = checked.Put(name, value);
        if (code == WBEM_E_NOT_FOUND)
            throw ProviderError(
                WBEM_E_INVALID_METHOD_PARAMETERS,
                replies::kUnknownParameter.arg(definition.name, method.name, RepositoryNames::Show(name)));
        if (Failed(code))
            throw ProviderError(code, replies::kWrongType.arg(definition.name, method.name, name));
    }
    return checked;
}

} // namespace

ManagementNamespace::ManagementNamespace(const QString& name, TableVersion version)
    : m_name(name)
    , m_table(name, version)
{
}

void ManagementNamespace::Add(const QString& className, const std::shared_ptr<ManagementClass>& implementation)
{
    m_implementations.insert(className, implementation);
}

bool ManagementNamespace::HasHandler(const QString& className, const QString& method) const
{
    const std::shared_ptr<ManagementClass> implementation = m_implementations.value(className);
    return implementation && implementation->FindHandler(method);
}

ClassDefinitionPtr ManagementNamespace::RequireClass(const QString& className) const
{
    ClassDefinitionPtr definition = m_table.Find(className);
    if (!definition)
        throw ProviderError(WBEM_E_INVALID_CLASS, replies::kUnknownClass.arg(RepositoryNames::Show(className)));
    return definition;
}

ManagementNamespace::Target ManagementNamespace::Resolve(const QString& path) const
{
    const std::shared_ptr<IWbemPath> parsed = CreateWbemPath();
    if (Failed(parsed->SetText(path)))
        throw ProviderError(WBEM_E_INVALID_OBJECT_PATH, replies::kInvalidPath.arg(RepositoryNames::Show(path)));
    QString className;
    parsed->GetClassName(&className);
    QList<PathKey> keys;
    parsed->GetKeys(&keys);

    Target target;
    target.definition = RequireClass(className);
    target.implementation = m_implementations.value(target.definition->name).get();
    target.isInstance = parsed->IsSingleton() || !keys.isEmpty();
    if (!target.isInstance)
        return target;
    const std::optional<ManagementClass::Keys> matched = MatchKeys(*target.definition, keys);
    if (!matched || parsed->IsSingleton() != target.definition->singleton)
        throw ProviderError(WBEM_E_INVALID_OBJECT_PATH,
                            replies::kWrongKeys.arg(RepositoryNames::Show(path), target.definition->name));
    target.keys = *matched;
    return target;
}

WbemObjectPtr ManagementNamespace::GetObject(const QString& path, CallContext& context) const
{
    const Target target = Resolve(path);
    if (!target.isInstance)
        return std::make_shared<WbemClassDefinitionObject>(target.definition);
    const std::optional<InstanceRow> row =
        target.implementation ? target.implementation->Get(target.definition, target.keys, context) : std::nullopt;
    if (!row)
        throw ProviderError(WBEM_E_NOT_FOUND, replies::kObjectMissing.arg(RepositoryNames::Show(path)));
    return row->ToObject();
}

void ManagementNamespace::EnumerateInstances(const QString& className, CallContext& context) const
{
    const ClassDefinitionPtr definition = RequireClass(className);
    const std::shared_ptr<ManagementClass> implementation = m_implementations.value(definition->name);
    if (!implementation)
        throw ProviderError(WBEM_E_NOT_SUPPORTED, replies::kNoInstances.arg(definition->name));
    implementation->Enumerate(definition, context);
}

ManagementClass::Effect ManagementNamespace::EffectOf(const QString& path, const QString& method) const
{
    const Target target = Resolve(path);
    const MethodDefinition* found = target.definition->FindMethod(method);
    return found && target.implementation ? target.implementation->EffectOf(found->name)
                                          : ManagementClass::Effect::Reads;
}

WbemObjectPtr ManagementNamespace::ExecMethod(const QString& path, const QString& methodName, const WbemObjectPtr& in,
                                              CallContext& context) const
{
    const Target target = Resolve(path);
    const QString& className = target.definition->name;
    const MethodDefinition* method = target.definition->FindMethod(methodName);
    if (!method)
        throw ProviderError(WBEM_E_INVALID_METHOD,
                            replies::kUnknownMethod.arg(className, RepositoryNames::Show(methodName)));
    if (method->isStatic && target.isInstance)
        throw ProviderError(WBEM_E_INVALID_METHOD_PARAMETERS, replies::kNeedsClass.arg(className, method->name));
    if (!method->isStatic && !target.isInstance)
        throw ProviderError(WBEM_E_INVALID_METHOD_PARAMETERS, replies::kNeedsInstance.arg(className, method->name));

    std::optional<WbemObject> parameters;
    if (method->in)
        parameters.emplace(CheckParameters(*target.definition, *method, in));
    const ManagementClass::Handler* handler =
        target.implementation ? target.implementation->FindHandler(method->name) : nullptr;
    if (!handler)
        RefuseUnbuilt(className, method->name);
    MethodCall call(*method, className, target.keys, parameters ? &*parameters : nullptr, context);
    (*handler)(call);
    return call.Output();
}

} // namespace quenvolta
