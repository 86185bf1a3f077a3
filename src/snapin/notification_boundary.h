#pragma once

#include "platform/hresult.h"
#include "ui/guard.h"

#include <utility>

namespace quenvolta
{

/// Runs what the console asked for. What it throws is shown and becomes E_FAIL.
template <typename Body>
HRESULT AtBoundary(IcMessages& messages, Body&& body)
{
    HRESULT result = E_FAIL;
    Guarded(messages, [&] { result = std::forward<Body>(body)(); });
    return result;
}

/// The same without showing: for what the console asks by itself whenever something is selected.
template <typename Body>
HRESULT QuietlyAtBoundary(Body&& body)
{
    try {
        return std::forward<Body>(body)();
    } catch (const Exception&) {
        return E_FAIL; // what is wrong shows when something is done
    }
}

} // namespace quenvolta
