#pragma once

#include "platform/hresult.h"
#include "platform/mmc/button_state.h"

namespace quenvolta
{

enum class MMC_CONSOLE_VERB {
    MMC_VERB_DELETE,
    MMC_VERB_PROPERTIES,
    MMC_VERB_RENAME,
    MMC_VERB_REFRESH,
};

/// The console's own commands for the selected item. All are hidden until the snap-in says otherwise.
class IConsoleVerb
{
public:
    virtual ~IConsoleVerb() = default;
    virtual HRESULT SetVerbState(MMC_CONSOLE_VERB verb, MMC_BUTTON_STATE buttonState, bool state) = 0;
};

} // namespace quenvolta
