#pragma once

#include "platform/channel/channel.h"
#include "platform/wbem/wbem_services.h"

#include <QDeadlineTimer>

namespace quenvolta
{

/// The deadline of a time-out as the management interfaces give it: milliseconds, or WBEM_INFINITE.
inline QDeadlineTimer DeadlineFor(int timeoutMs)
{
    return timeoutMs == WBEM_INFINITE ? QDeadlineTimer(QDeadlineTimer::Forever) : QDeadlineTimer(timeoutMs);
}

/// Pumps the channel until `condition` holds; false when the deadline passed first. What has arrived by then is
/// always taken. The condition must hold once the channel is dead.
template <typename Condition>
bool WaitUntil(Channel* channel, QDeadlineTimer deadline, Condition condition)
{
    while (!condition()) {
        const bool last = deadline.hasExpired();
        channel->Pump(deadline);
        if (last)
            return condition();
    }
    return true;
}

} // namespace quenvolta
