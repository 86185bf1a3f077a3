#include "provider/served_namespaces.h"

#include "provider/provider_error.h"
#include "provider/provider_texts.h"
#include "provider/server_namespaces.h"
#include "provider/svn/repository_names.h"

#include <algorithm>

namespace quenvolta
{

ServedNamespaces::ServedNamespaces(const QString& dataFolder, const ServedVersion& version)
    : m_data(dataFolder)
{
    m_namespaces.push_back(MakeServerNamespace(m_data, version));
    m_namespaces.push_back(MakeStandardNamespace(version));
}

ManagementNamespace& ServedNamespaces::Require(const QString& name) const
{
    const auto found = std::find_if(m_namespaces.begin(), m_namespaces.end(), [&name](const auto& each) {
        return each->Name().compare(name, Qt::CaseInsensitive) == 0;
    });
    if (found == m_namespaces.end())
        throw ProviderError(WBEM_E_INVALID_NAMESPACE, replies::kUnknownNamespace.arg(RepositoryNames::Show(name)));
    return **found;
}

ManagementClass::Effect ServedNamespaces::EffectOf(const CallMessage& call) const
{
    return call.operation == Operation::ExecMethod ? Require(call.namespaceName).EffectOf(call.target, call.method)
                                                   : ManagementClass::Effect::Reads;
}

ResultMessage ServedNamespaces::Carry(const CallMessage& call, CallContext& context) const
{
    const ManagementNamespace& target = Require(call.namespaceName);
    ResultMessage result;
    result.callId = call.callId;
    switch (call.operation) {
    case Operation::OpenNamespace:
        break;
    case Operation::GetObject:
        result.object = target.GetObject(call.target, context);
        break;
    case Operation::CreateInstanceEnum:
        target.EnumerateInstances(call.target, context);
        break;
    case Operation::ExecMethod:
        result.object = target.ExecMethod(call.target, call.method, call.input, context);
        break;
    }
    return result;
}

} // namespace quenvolta
