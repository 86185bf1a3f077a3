#pragma once

#include "platform/channel/message.h"
#include "provider/provider_error.h"

namespace quenvolta
{

/// Whatever is being thrown, as the error that the console gets. To be called where an exception is handled.
ProviderError CurrentError();

/// The end of a call that failed.
ResultMessage FailureResult(std::uint32_t callId, const ProviderError& error);

} // namespace quenvolta
