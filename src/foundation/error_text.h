#pragma once

#include "platform/hresult.h"

#include <QString>

namespace quenvolta
{

/// The text of a failure code, from the message table; "HRESULT 0x..." for a code that the table doesn't hold.
QString ErrorTextFromHResult(HRESULT code);

} // namespace quenvolta
