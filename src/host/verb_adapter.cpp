#include "host/verb_adapter.h"

namespace quenvolta
{

HRESULT VerbAdapter::SetVerbState(MMC_CONSOLE_VERB verb, MMC_BUTTON_STATE buttonState, bool state)
{
    if ((buttonState == MMC_BUTTON_STATE::ENABLED) == state)
        m_enabled.insert(static_cast<int>(verb));
    else
        m_enabled.remove(static_cast<int>(verb));
    return S_OK;
}

} // namespace quenvolta
