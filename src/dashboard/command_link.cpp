#include "dashboard/command_link.h"

#include <algorithm>

namespace quenvolta
{

using namespace Qt::StringLiterals;

std::optional<CommandLink> FindCommandLink(const QString& address)
{
    const auto* const found = std::ranges::find_if(
        kCommandLinkAddresses, [&](QLatin1StringView each) { return address.compare(each, Qt::CaseInsensitive) == 0; });
    if (found == kCommandLinkAddresses.end())
        return {};
    return static_cast<CommandLink>(found - kCommandLinkAddresses.begin());
}

bool IsWebAddress(const QString& address)
{
    return address.startsWith("http://"_L1, Qt::CaseInsensitive) ||
           address.startsWith("https://"_L1, Qt::CaseInsensitive);
}

} // namespace quenvolta
