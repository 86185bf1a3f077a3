#include "platform/channel/instance_enumerator.h"

#include "platform/channel/wait_until.h"

#include <algorithm>
#include <utility>

namespace quenvolta
{

InstanceEnumerator::InstanceEnumerator(std::shared_ptr<Channel> channel, std::shared_ptr<PendingCall> call)
    : m_channel(std::move(channel))
    , m_call(std::move(call))
{
}

InstanceEnumerator::~InstanceEnumerator()
{
    if (!m_call->IsDone())
        m_channel->Stop(m_call);
}

HRESULT InstanceEnumerator::Next(int timeoutMs, int count, QList<WbemObjectPtr>* objects)
{
    if (!objects || count <= 0)
        return WBEM_E_INVALID_PARAMETER;
    QList<WbemObjectPtr>& arrived = m_call->Instances();
    const bool inTime =
        WaitUntil(m_channel.get(), DeadlineFor(timeoutMs), [&] { return m_call->IsDone() || arrived.size() >= count; });
    const qsizetype taken = std::min<qsizetype>(count, arrived.size());
    std::move(arrived.begin(), arrived.begin() + taken, std::back_inserter(*objects));
    arrived.remove(0, taken);
    if (taken == count)
        return S_OK;
    if (!inTime)
        return WBEM_S_TIMEDOUT;
    if (Succeeded(m_call->Code()))
        return S_FALSE;
    m_call->PublishError();
    return m_call->Code();
}

} // namespace quenvolta
