#include "platform/channel/channel_pool.h"

#include "platform/channel/channel_locator.h"
#include "platform/channel/process_transport.h"
#include "platform/channel/provider_command.h"

#include <utility>

namespace quenvolta
{

ChannelPool::ChannelPool(ChannelOptions options)
    : m_options(std::move(options))
{
}

WbemLocatorPtr ChannelPool::CreateLocator()
{
    return std::make_shared<ChannelLocator>(shared_from_this());
}

std::shared_ptr<Channel> ChannelPool::ChannelTo(const ComputerName& computer, bool* isNew)
{
    std::weak_ptr<Channel>& known = m_channels[computer.Key()];
    *isNew = false;
    if (std::shared_ptr<Channel> channel = known.lock()) {
        channel->Pump(QDeadlineTimer(0)); // notices an end that came since its last use
        if (channel->IsAlive())
            return channel;
    }
    *isNew = true;
    const ProviderCommand command = CommandFor(m_options, computer);
    auto channel = std::make_shared<Channel>(
        std::make_unique<ProcessTransport>(command.program, command.arguments, command.environment), command,
        m_options.about);
    known = channel;
    return channel;
}

} // namespace quenvolta
