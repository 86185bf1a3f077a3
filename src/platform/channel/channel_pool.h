#pragma once

#include "platform/channel/channel.h"
#include "platform/channel/channel_options.h"
#include "platform/channel/computer_name.h"
#include "platform/wbem/wbem_services.h"

#include <QHash>
#include <QString>

#include <memory>

namespace quenvolta
{

/// The channels of this program, one a computer. A channel lives as long as somebody uses it. Owned by std::shared_ptr.
class ChannelPool : public std::enable_shared_from_this<ChannelPool>
{
public:
    explicit ChannelPool(ChannelOptions options);

    /// A locator that opens namespaces through these channels.
    WbemLocatorPtr CreateLocator();

    /// The living channel to a computer, else a new one; the new one may be dead. `isNew` tells which it is.
    std::shared_ptr<Channel> ChannelTo(const ComputerName& computer, bool* isNew);

private:
    ChannelOptions m_options;
    QHash<QString, std::weak_ptr<Channel>> m_channels; // by ComputerName::Key
};

} // namespace quenvolta
