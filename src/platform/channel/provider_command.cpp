#include "platform/channel/provider_command.h"

#include "platform/channel/channel_texts.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

ProviderCommand LocalCommand(const ChannelOptions& options)
{
    return {options.localProgram,
            QStringList{u"--stdio"_s} + options.localArguments,
            options.localEnvironment,
            options.localHelloTimeout,
            false,
            ChannelTextOf(ChannelText::ThisComputer)};
}

ProviderCommand RemoteCommand(const ChannelOptions& options, const ComputerName& computer)
{
    QStringList arguments = options.sshArguments;
    // Two unanswered keep-alives end a silent link; without a terminal no login shell is interactive.
    arguments << u"-T"_s << u"-o"_s << u"ServerAliveInterval=15"_s << u"-o"_s << u"ServerAliveCountMax=2"_s << u"-o"_s
              << u"ConnectTimeout=15"_s;
    if (computer.port != 0)
        arguments << u"-p"_s << QString::number(computer.port);
    if (!computer.user.isEmpty())
        arguments << u"-l"_s << computer.user;
    arguments << u"--"_s << computer.host << options.remoteProgram << u"--stdio"_s;
    QMap<QString, QString> environment = options.sshEnvironment;
    // Its words are told apart by their English wording.
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    ProviderCommand command{options.sshProgram,         arguments, environment,
                            options.remoteHelloTimeout, true,      computer.host};
    if (options.isStillWanted)
        command.isStillWanted = [ask = options.isStillWanted, host = computer.host] { return ask(host); };
    return command;
}

} // namespace

ProviderCommand CommandFor(const ChannelOptions& options, const ComputerName& computer)
{
    return computer.IsLocal() ? LocalCommand(options) : RemoteCommand(options, computer);
}

} // namespace quenvolta
