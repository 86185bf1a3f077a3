#pragma once

#include "platform/channel/channel.h"
#include "platform/wbem/wbem_services.h"

#include <memory>

namespace quenvolta
{

/// The instances that an enumeration's answer brings. Dropped early, it stops the enumeration.
class InstanceEnumerator final : public IEnumWbemClassObject
{
public:
    InstanceEnumerator(std::shared_ptr<Channel> channel, std::shared_ptr<PendingCall> call);
    ~InstanceEnumerator() override;
    Q_DISABLE_COPY_MOVE(InstanceEnumerator)

    HRESULT Next(int timeoutMs, int count, QList<WbemObjectPtr>* objects) override;

private:
    std::shared_ptr<Channel> m_channel;
    std::shared_ptr<PendingCall> m_call;
};

} // namespace quenvolta
