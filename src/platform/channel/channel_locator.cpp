#include "platform/channel/channel_locator.h"

#include "platform/channel/channel_services.h"

#include <QRegularExpression>

#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

ChannelLocator::ChannelLocator(std::shared_ptr<ChannelPool> pool)
    : m_pool(std::move(pool))
{
}

HRESULT ChannelLocator::ConnectServer(const QString& namespacePath, const QString&, const QString&, const QString&,
                                      int flags, const QString&, const WbemContextPtr&, WbemServicesPtr* services)
{
    static const QRegularExpression kPath(uR"(\A\\\\(.*)\\root\\([A-Za-z0-9_]{1,255})\z)"_s,
                                          QRegularExpression::CaseInsensitiveOption |
                                              QRegularExpression::DotMatchesEverythingOption);
    if (flags != 0 || !services)
        return WBEM_E_INVALID_PARAMETER;
    const QRegularExpressionMatch path = kPath.match(namespacePath);
    if (!path.hasMatch())
        return WBEM_E_INVALID_NAMESPACE;
    const std::optional<ComputerName> computer = ParseComputerName(path.capturedView(1));
    if (!computer) {
        SetErrorInfo(CreateErrorInfo(ChannelTextOf(ChannelText::InvalidComputerName).arg(path.captured(1))));
        return HR_INVALID_COMPUTER_NAME;
    }
    for (;;) {
        bool isNew = false;
        const std::shared_ptr<Channel> channel = m_pool->ChannelTo(*computer, &isNew);
        if (!channel->IsAlive()) {
            SetErrorInfo(CreateErrorInfo(channel->Failure().text));
            return channel->Failure().code;
        }
        const auto opened = std::make_shared<ChannelServices>(channel, path.captured(2));
        const HRESULT code = opened->Open();
        if (Succeeded(code))
            *services = opened;
        // An older channel may turn out to have ended while nobody used it.
        if (isNew || channel->IsAlive())
            return code;
    }
}

} // namespace quenvolta
