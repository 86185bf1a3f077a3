#pragma once

#include "platform/channel/channel.h"
#include "platform/wbem/wbem_services.h"

#include <memory>

namespace quenvolta
{

/// The outcome of a method call that was made through a channel.
class CallResult final : public IWbemCallResult
{
public:
    CallResult(std::shared_ptr<Channel> channel, std::shared_ptr<PendingCall> call);

    HRESULT GetCallStatus(int timeoutMs, HRESULT* status) override;
    HRESULT GetResultObject(int timeoutMs, WbemObjectPtr* result) override;

private:
    /// S_OK when the answer is there, WBEM_S_TIMEDOUT, or the failure that lost it.
    HRESULT WaitForAnswer(int timeoutMs);

    std::shared_ptr<Channel> m_channel;
    std::shared_ptr<PendingCall> m_call;
};

} // namespace quenvolta
