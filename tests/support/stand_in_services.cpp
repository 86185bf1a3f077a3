#include "support/stand_in_services.h"

#include "platform/wbem/object_path.h"

#include <algorithm>
#include <utility>

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

namespace
{

HRESULT Answer(const Failure& failure)
{
    if (failure.information)
        SetErrorInfo(failure.information);
    return failure.code;
}

} // namespace

void PendingCall::Complete()
{
    m_status = m_work(&m_result);
    GetErrorInfo(&m_information);
}

void PendingCall::Fail(const Failure& failure)
{
    m_status = failure.code;
    m_information = failure.information;
}

/// What the console polls.
class StandInCallResult final : public IWbemCallResult
{
public:
    explicit StandInCallResult(std::shared_ptr<PendingCall> call)
        : m_call(std::move(call))
    {
    }

    HRESULT GetCallStatus(int, HRESULT* status) override
    {
        if (!m_call->m_status)
            return WBEM_S_TIMEDOUT;
        *status = *m_call->m_status;
        SetErrorInfo(m_call->m_information);
        return S_OK;
    }

    HRESULT GetResultObject(int, WbemObjectPtr* result) override
    {
        if (!m_call->m_status)
            return WBEM_S_TIMEDOUT;
        *result = m_call->m_result;
        return *m_call->m_status;
    }

private:
    std::shared_ptr<PendingCall> m_call;
};

/// A list of instances as it was when it was asked for.
class StandInEnumerator final : public IEnumWbemClassObject
{
public:
    StandInEnumerator(StandInServer& server, const QString& className, QList<WbemObjectPtr> objects)
        : m_server(server)
        , m_className(className)
        , m_objects(std::move(objects))
    {
    }

    HRESULT Next(int, int count, QList<WbemObjectPtr>* objects) override
    {
        if (const std::optional<Failure> failure = m_server.TakeFailure(Operation::ReadInstances, m_className))
            return Answer(*failure);
        const qsizetype taken = qMin<qsizetype>(count, m_objects.size() - m_position);
        *objects += m_objects.sliced(m_position, taken);
        m_position += taken;
        return taken == count ? S_OK : S_FALSE;
    }

private:
    StandInServer& m_server;
    QString m_className;
    QList<WbemObjectPtr> m_objects;
    qsizetype m_position = 0;
};

/// Opens namespaces of one server, whatever computer the path names.
class StandInLocator final : public IWbemLocator
{
public:
    explicit StandInLocator(StandInServer& server)
        : m_server(server)
    {
    }

    HRESULT ConnectServer(const QString& namespacePath, const QString&, const QString&, const QString&, int,
                          const QString&, const WbemContextPtr&, WbemServicesPtr* services) override
    {
        m_server.m_calls.append({Operation::Connect, namespacePath, {}, {}, {}, {}, 0});
        if (const std::optional<Failure> failure = m_server.TakeFailure(Operation::Connect, namespacePath))
            return Answer(*failure);
        if (!m_server.hasNamespace)
            return WBEM_E_INVALID_NAMESPACE;
        if (m_server.withoutRequestIdentity)
            *services = std::make_shared<StandInServices>(m_server, namespacePath);
        else
            *services = std::make_shared<IdentifiedStandInServices>(m_server, namespacePath);
        return S_OK;
    }

private:
    StandInServer& m_server;
};

std::function<HRESULT(WbemLocatorPtr*)> StandInServer::LocatorFactory()
{
    return [this](WbemLocatorPtr* locator) {
        if (Succeeded(locatorCode))
            *locator = std::make_shared<StandInLocator>(*this);
        return locatorCode;
    };
}

StandInServices::StandInServices(StandInServer& server, const QString& namespacePath)
    : m_server(server)
    , m_namespacePath(namespacePath)
    , m_table(server.Table(namespacePath))
    , m_connection(++server.m_connections)
{
    m_blanket.authenticationService = 10;
    m_blanket.serverPrincipalName = u"principal"_s;
}

HRESULT StandInServices::QueryBlanket(ProxyBlanket* blanket) const
{
    *blanket = m_blanket;
    return m_server.queryBlanketCode;
}

HRESULT StandInServices::SetBlanket(const ProxyBlanket& blanket)
{
    // The console changes two settings and keeps the others as they were.
    if (blanket.authenticationLevel != RPC_C_AUTHN_LEVEL_PKT_PRIVACY ||
        blanket.authenticationService != m_blanket.authenticationService ||
        blanket.serverPrincipalName != m_blanket.serverPrincipalName)
        return E_INVALIDARG;
    m_blanket = blanket;
    return m_server.setBlanketCode;
}

RecordedCall& StandInServices::Record(Operation operation, const QString& path, const WbemContextPtr& context)
{
    RecordedCall call{operation, path, {}, {}, std::exchange(m_nextRequestId, {}), {}, m_connection};
    Variant activityId;
    if (context && Succeeded(context->GetValue(u"ActivityId"_s, 0, &activityId)))
        call.activityId = std::get<QString>(activityId);
    m_server.m_calls.append(call);
    return m_server.m_calls.last();
}

HRESULT StandInServices::Resolve(const QString& path, Target* target) const
{
    const std::shared_ptr<IWbemPath> parsed = CreateWbemPath();
    if (Failed(parsed->SetText(path)))
        return WBEM_E_INVALID_OBJECT_PATH;
    QString className;
    parsed->GetClassName(&className);
    target->definition = m_table.Find(className);
    if (!target->definition)
        return WBEM_E_INVALID_CLASS;
    QList<PathKey> keys;
    parsed->GetKeys(&keys);
    QStringList names;
    for (const PathKey& key : std::as_const(keys)) {
        names.append(key.name);
        target->keys.insert(key.name, key.value);
    }
    target->isInstance = parsed->IsSingleton() || !keys.isEmpty();
    if (target->isInstance &&
        (names != target->definition->Keys() || parsed->IsSingleton() != target->definition->singleton))
        return WBEM_E_INVALID_OBJECT_PATH;
    return S_OK;
}

HRESULT StandInServices::ReadObject(const QString& path, const Target& target, WbemObjectPtr* object) const
{
    if (path == u"__SystemClass") {
        const bool delegated = m_blanket.impersonationLevel == RPC_C_IMP_LEVEL_DELEGATE;
        if (const HRESULT code = delegated ? m_server.delegateProbeCode : m_server.impersonateProbeCode; Failed(code))
            return code;
    }
    *object = target.isInstance ? m_server.FindInstance(*target.definition, target.keys)
                                : std::make_shared<WbemClassDefinitionObject>(target.definition);
    return *object ? S_OK : WBEM_E_NOT_FOUND;
}

HRESULT StandInServices::GetObject(const QString& path, int, const WbemContextPtr& context, WbemObjectPtr* object)
{
    Record(Operation::GetObject, path, context);
    if (IsDropped())
        return RPC_E_DISCONNECTED;
    Target target;
    const HRESULT code = Resolve(path, &target);
    if (Failed(code))
        return code;
    if (const std::optional<Failure> failure = m_server.TakeFailure(Operation::GetObject, target.definition->name))
        return Answer(*failure);
    return ReadObject(path, target, object);
}

HRESULT StandInServices::CreateInstanceEnum(const QString& className, int, const WbemContextPtr& context,
                                            EnumWbemClassObjectPtr* enumerator)
{
    Record(Operation::EnumerateInstances, className, context);
    if (IsDropped())
        return RPC_E_DISCONNECTED;
    if (const std::optional<Failure> failure = m_server.TakeFailure(Operation::EnumerateInstances, className))
        return Answer(*failure);
    if (!m_table.Find(className))
        return WBEM_E_INVALID_CLASS;
    *enumerator = std::make_shared<StandInEnumerator>(m_server, className, m_server.Instances(className));
    return S_OK;
}

HRESULT StandInServices::CheckCall(const Target& target, const QString& method, const WbemObjectPtr& in,
                                   std::shared_ptr<WbemObject>* checked) const
{
    const MethodDefinition* definition = target.definition->FindMethod(method);
    if (!definition)
        return WBEM_E_INVALID_METHOD;
    if (definition->isStatic == target.isInstance)
        return WBEM_E_INVALID_METHOD_PARAMETERS;
    *checked = definition->in ? std::make_shared<WbemObject>(definition->in) : nullptr;
    QStringList names;
    if (in)
        in->GetNames(&names);
    for (const QString& name : std::as_const(names)) {
        Variant value;
        in->Get(name, &value);
        if (!*checked || (*checked)->Put(name, value) == WBEM_E_NOT_FOUND)
            return WBEM_E_INVALID_METHOD_PARAMETERS;
        if (const HRESULT code = (*checked)->Put(name, value); Failed(code))
            return code;
    }
    return S_OK;
}

// Does the work of a checked call; what was done under the same identifier before is not done again.
HRESULT StandInServices::Work(StandInServer& server, const Target& target, const QString& method,
                              const std::shared_ptr<WbemObject>& in, const QUuid& requestId, WbemObjectPtr* out)
{
    if (!requestId.isNull() && server.m_done.contains(requestId)) {
        *out = server.m_done.take(requestId);
        return S_OK;
    }
    const MethodDefinition& definition = *target.definition->FindMethod(method);
    const MethodHandler handler = server.m_handlers.value(target.definition->name + u'.' + definition.name);
    if (!handler)
        return WBEM_E_NOT_SUPPORTED;
    const bool entry = target.definition->name == u"Quenvolta_RepositoryEntry";
    if (target.isInstance && !entry && !server.FindInstance(*target.definition, target.keys))
        return WBEM_E_NOT_FOUND;
    MethodContext call{server, target.keys.isEmpty() ? QString{} : target.keys.first(), in,
                       definition.out ? std::make_shared<WbemObject>(definition.out) : nullptr};
    SetErrorInfo(nullptr);
    const HRESULT code = handler(call);
    if (Succeeded(code))
        *out = call.out;
    return code;
}

HRESULT StandInServices::ExecMethod(const QString& path, const QString& method, int flags,
                                    const WbemContextPtr& context, const WbemObjectPtr& in, WbemObjectPtr* out,
                                    WbemCallResultPtr* result)
{
    RecordedCall& record = Record(Operation::ExecMethod, path, context);
    record.method = method;
    const QString activityId = record.activityId;
    const QUuid requestId = record.requestId;
    if (IsDropped())
        return RPC_E_DISCONNECTED;
    Target target;
    std::shared_ptr<WbemObject> checked;
    HRESULT code = Resolve(path, &target);
    if (Succeeded(code))
        code = CheckCall(target, method, in, &checked);
    if (Failed(code))
        return code;
    if (checked) {
        const QList<PropertyDefinition>& parameters = checked->Definition()->properties;
        for (qsizetype i = 0; i < parameters.size(); ++i) {
            if (!IsNullVariant(checked->Values()[i]))
                record.in.insert(parameters[i].name, checked->Values()[i]);
        }
    }
    const std::optional<Failure> failure = m_server.TakeFailure(Operation::ExecMethod, method);
    if (failure && !failure->afterWork)
        return Answer(*failure);
    const auto work = [&server = m_server, target, method, checked, requestId](WbemObjectPtr* given) {
        return Work(server, target, method, checked, requestId, given);
    };
    if (flags & WBEM_FLAG_RETURN_IMMEDIATELY) {
        auto pending = std::make_shared<PendingCall>();
        pending->m_work = work;
        pending->m_activityId = activityId;
        m_server.m_pending.append(pending);
        *result = std::make_shared<StandInCallResult>(pending);
        if (!m_server.holdAsyncCalls)
            pending->Complete();
        return S_OK;
    }
    WbemObjectPtr answer;
    code = work(&answer);
    if (failure) {
        if (Succeeded(code))
            m_server.m_done.insert(requestId, answer);
        return Answer(*failure);
    }
    if (Succeeded(code))
        *out = answer;
    return code;
}

} // namespace quenvolta::test
