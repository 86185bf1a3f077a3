#pragma once

#include "ui/messages.h"

#include <utility>

namespace quenvolta
{

/// Shows the exception that is being handled. Called inside a handler.
void ReportCurrentException(IcMessages& messages) noexcept;

/// Runs the body of a slot, an event handler or a callback: a failure is shown and goes no further. False after a
/// failure.
template <typename Body>
bool Guarded(IcMessages& messages, Body&& body) noexcept
{
    try {
        std::forward<Body>(body)();
        return true;
    } catch (...) {
        ReportCurrentException(messages);
        return false;
    }
}

} // namespace quenvolta
