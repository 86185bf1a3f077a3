#pragma once

#include "platform/mmc/console_verb.h"

#include <QSet>

namespace quenvolta
{

/// The console's own commands and which of them the selected item offers.
class VerbAdapter final : public IConsoleVerb
{
public:
    HRESULT SetVerbState(MMC_CONSOLE_VERB verb, MMC_BUTTON_STATE buttonState, bool state) override;

    bool IsEnabled(MMC_CONSOLE_VERB verb) const { return m_enabled.contains(static_cast<int>(verb)); }
    /// Another item is selected: nothing is offered until it says so.
    void Reset() { m_enabled.clear(); }

private:
    QSet<int> m_enabled;
};

} // namespace quenvolta
