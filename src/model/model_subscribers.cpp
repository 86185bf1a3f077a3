#include "model/model_subscribers.h"

#include <algorithm>

namespace quenvolta
{

void ModelSubscribers::Remove(IcModelEvents& subscriber)
{
    if (m_depth == 0)
        m_subscribers.removeAll(&subscriber);
    else
        std::replace(m_subscribers.begin(), m_subscribers.end(), &subscriber, static_cast<IcModelEvents*>(nullptr));
}

void ModelSubscribers::Leave()
{
    if (--m_depth == 0)
        m_subscribers.removeAll(nullptr);
}

} // namespace quenvolta
