#include "platform/channel/call_result.h"

#include "platform/channel/wait_until.h"

#include <utility>

namespace quenvolta
{

CallResult::CallResult(std::shared_ptr<Channel> channel, std::shared_ptr<PendingCall> call)
    : m_channel(std::move(channel))
    , m_call(std::move(call))
{
}

HRESULT CallResult::WaitForAnswer(int timeoutMs)
{
    if (!WaitUntil(m_channel.get(), DeadlineFor(timeoutMs), [this] { return m_call->IsDone(); }))
        return WBEM_S_TIMEDOUT;
    if (Failed(m_call->Code()))
        m_call->PublishError();
    return m_call->WasLost() ? m_call->Code() : S_OK;
}

HRESULT CallResult::GetCallStatus(int timeoutMs, HRESULT* status)
{
    const HRESULT code = WaitForAnswer(timeoutMs);
    if (code == S_OK)
        *status = m_call->Code();
    return code;
}

HRESULT CallResult::GetResultObject(int timeoutMs, WbemObjectPtr* result)
{
    const HRESULT code = WaitForAnswer(timeoutMs);
    if (code != S_OK)
        return code;
    if (Succeeded(m_call->Code()))
        *result = m_call->Object();
    return m_call->Code();
}

} // namespace quenvolta
