#pragma once

#include "platform/wbem/wbem_services.h"

#include <functional>

namespace quenvolta
{

/// Makes the locator that a connection opens its namespace with.
using WbemLocatorFactory = std::function<HRESULT(WbemLocatorPtr*)>;

} // namespace quenvolta
