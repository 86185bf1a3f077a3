#pragma once

#include "platform/channel/channel_options.h"
#include "platform/channel/computer_name.h"

namespace quenvolta
{

/// The command that starts a provider and talks with it on its standard input and output.
struct ProviderCommand {
    QString program;
    QStringList arguments;
    QMap<QString, QString> environment;
    std::chrono::milliseconds helloTimeout{};
    /// The program is ssh, the provider runs elsewhere.
    bool remote = false;
    /// The computer as it is shown to a person.
    QString computer;
    /// Asked while the first message is waited for; false gives it up. May be empty.
    std::function<bool()> isStillWanted = {};
};

/// The command for a computer.
ProviderCommand CommandFor(const ChannelOptions& options, const ComputerName& computer);

} // namespace quenvolta
