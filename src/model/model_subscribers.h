#pragma once

#include "model/model_events.h"

#include <QList>
#include <QScopeGuard>

namespace quenvolta
{

/// The subscribers in the order of their subscriptions. Subscribers may come and go during a notification: one that
/// left is called no more, one that came is called from the next notification on.
class ModelSubscribers
{
public:
    void Add(IcModelEvents& subscriber) { m_subscribers.append(&subscriber); }
    /// Ends every subscription of the subscriber.
    void Remove(IcModelEvents& subscriber);

    /// Calls one operation of each subscriber. An exception of one ends the notification and reaches the caller.
    template <typename... Parameters, typename... Arguments>
    void Notify(void (IcModelEvents::*operation)(Parameters...), const Arguments&... arguments)
    {
        ++m_depth;
        const auto leave = qScopeGuard([this] { Leave(); });
        const qsizetype count = m_subscribers.size();
        for (qsizetype i = 0; i < count; ++i) {
            if (IcModelEvents* subscriber = m_subscribers[i])
                (subscriber->*operation)(arguments...);
        }
    }

private:
    void Leave();

    QList<IcModelEvents*> m_subscribers; // null where one left during a notification
    int m_depth = 0;
};

} // namespace quenvolta
