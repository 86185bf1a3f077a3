#include "platform/channel/channel_services.h"

#include "platform/channel/call_result.h"
#include "platform/channel/instance_enumerator.h"
#include "platform/channel/wait_until.h"

#include <QScopeGuard>

#include <utility>

namespace quenvolta
{

namespace
{

const QDeadlineTimer kForever(QDeadlineTimer::Forever);

} // namespace

ChannelServices::ChannelServices(std::shared_ptr<Channel> channel, QString namespaceName)
    : m_channel(std::move(channel))
    , m_namespaceName(std::move(namespaceName))
{
    m_blanket.authenticationLevel = RPC_C_AUTHN_LEVEL_PKT_PRIVACY;
    m_blanket.impersonationLevel = RPC_C_IMP_LEVEL_IMPERSONATE;
}

HRESULT ChannelServices::Send(CallMessage call, std::shared_ptr<PendingCall>* pending,
                              const std::optional<QString>& streamed)
{
    const QUuid given = std::exchange(m_nextRequestId, QUuid());
    call.requestId = given.isNull() ? QUuid::createUuid() : given;
    call.namespaceName = m_namespaceName;
    *pending = m_channel->Send(std::move(call), streamed);
    if (*pending)
        return S_OK;
    SetErrorInfo(CreateErrorInfo(ChannelTextOf(ChannelText::CannotSend)));
    return WBEM_E_INVALID_PARAMETER;
}

HRESULT ChannelServices::SendAndWait(CallMessage call, std::shared_ptr<PendingCall>* pending)
{
    if (const HRESULT code = Send(std::move(call), pending); Failed(code))
        return code;
    WaitUntil(m_channel.get(), kForever, [&] { return (*pending)->IsDone(); });
    const HRESULT code = (*pending)->Code();
    if (Failed(code))
        (*pending)->PublishError();
    return code;
}

HRESULT ChannelServices::Open()
{
    std::shared_ptr<PendingCall> pending;
    return SendAndWait({}, &pending);
}

HRESULT ChannelServices::GetObject(const QString& path, int flags, const WbemContextPtr& context, WbemObjectPtr* object)
{
    if (flags != 0 || !object)
        return WBEM_E_INVALID_PARAMETER;
    CallMessage call;
    call.operation = Operation::GetObject;
    call.target = path;
    call.context = context;
    std::shared_ptr<PendingCall> pending;
    const HRESULT code = SendAndWait(std::move(call), &pending);
    if (Succeeded(code))
        *object = pending->Object();
    return code;
}

HRESULT ChannelServices::CreateInstanceEnum(const QString& className, int flags, const WbemContextPtr& context,
                                            EnumWbemClassObjectPtr* enumerator)
{
    if (flags != 0 || !enumerator)
        return WBEM_E_INVALID_PARAMETER;
    CallMessage call;
    call.operation = Operation::CreateInstanceEnum;
    call.target = className;
    call.context = context;
    std::shared_ptr<PendingCall> pending;
    if (const HRESULT code = Send(std::move(call), &pending); Failed(code))
        return code;
    WaitUntil(m_channel.get(), kForever, [&] { return pending->IsDone() || !pending->Instances().isEmpty(); });
    // A failure behind instances belongs to the enumerator: what came before it counts.
    if (pending->IsDone() && pending->Instances().isEmpty() && Failed(pending->Code())) {
        pending->PublishError();
        return pending->Code();
    }
    *enumerator = std::make_shared<InstanceEnumerator>(m_channel, std::move(pending));
    return S_OK;
}

HRESULT ChannelServices::VisitElements(const QString& path, const QString& method, const WbemObjectPtr& in,
                                       const QString& parameter, const WbemObjectVisitor& visit)
{
    CallMessage call;
    call.operation = Operation::ExecMethod;
    call.target = path;
    call.method = method;
    call.input = in;
    std::shared_ptr<PendingCall> pending;
    if (const HRESULT code = Send(std::move(call), &pending, parameter); Failed(code))
        return code;
    const auto stop = qScopeGuard([&] {
        if (!pending->IsDone())
            m_channel->Stop(pending);
    });
    do {
        WaitUntil(m_channel.get(), kForever, [&] { return pending->IsDone() || pending->HasElements(); });
        pending->VisitElements(visit);
    } while (!pending->IsDone());
    if (Failed(pending->Code()))
        pending->PublishError();
    return pending->Code();
}

HRESULT ChannelServices::ExecMethod(const QString& path, const QString& method, int flags,
                                    const WbemContextPtr& context, const WbemObjectPtr& in, WbemObjectPtr* out,
                                    WbemCallResultPtr* result)
{
    const bool immediately = flags == WBEM_FLAG_RETURN_IMMEDIATELY;
    if ((flags != 0 && !immediately) || (immediately && !result))
        return WBEM_E_INVALID_PARAMETER;
    CallMessage call;
    call.operation = Operation::ExecMethod;
    call.target = path;
    call.method = method;
    call.input = in;
    call.context = context;
    std::shared_ptr<PendingCall> pending;
    const HRESULT code = immediately ? Send(std::move(call), &pending) : SendAndWait(std::move(call), &pending);
    if (Failed(code))
        return code;
    if (immediately) {
        // A connection that is known to be lost is told now, when the caller can still repeat the call.
        m_channel->Pump(QDeadlineTimer(0));
        if (pending->WasLost()) {
            pending->PublishError();
            return pending->Code();
        }
    } else if (out) {
        *out = pending->Object();
    }
    if (result)
        *result = std::make_shared<CallResult>(m_channel, std::move(pending));
    return code;
}

HRESULT ChannelServices::QueryBlanket(ProxyBlanket* blanket) const
{
    *blanket = m_blanket;
    return S_OK;
}

HRESULT ChannelServices::SetBlanket(const ProxyBlanket& blanket)
{
    m_blanket = blanket;
    return S_OK;
}

} // namespace quenvolta
