#include "dashboard/service_state_text.h"

#include "ui/string_table.h"

#include <array>

namespace quenvolta
{

QString ServiceStateText(std::uint32_t state)
{
    static constexpr std::array kStates{
        StringId::kServiceStopped, StringId::kServiceStartPending,    StringId::kServiceStopPending,
        StringId::kServiceRunning, StringId::kServiceContinuePending, StringId::kServicePausePending,
        StringId::kServicePaused,
    };
    return LoadString(state >= 1 && state <= kStates.size() ? kStates[state - 1] : StringId::kServiceUnexpected);
}

} // namespace quenvolta
