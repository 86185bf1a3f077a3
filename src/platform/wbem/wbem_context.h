#pragma once

#include "platform/wbem/wbem_services.h"

namespace quenvolta
{

/// An empty call context.
WbemContextPtr CreateWbemContext();

} // namespace quenvolta
