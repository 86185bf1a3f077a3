#pragma once

#include "platform/channel/channel_pool.h"
#include "platform/wbem/wbem_services.h"

#include <memory>

namespace quenvolta
{

/// Opens namespaces through the channels of a pool. Beside the platform's codes, HR_INVALID_COMPUTER_NAME for a
/// computer's name that can't be one, and what became of the channel otherwise.
class ChannelLocator final : public IWbemLocator
{
public:
    explicit ChannelLocator(std::shared_ptr<ChannelPool> pool);

    HRESULT ConnectServer(const QString& namespacePath, const QString& user, const QString& password,
                          const QString& locale, int flags, const QString& authority, const WbemContextPtr& context,
                          WbemServicesPtr* services) override;

private:
    std::shared_ptr<ChannelPool> m_pool;
};

} // namespace quenvolta
