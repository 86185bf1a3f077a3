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

} // namespace quenvolta
