#pragma once

#include "platform/wbem/wbem_services.h"

#include <QString>

namespace quenvolta
{

/// A long call that the server has taken on.
struct StartedActivity {
    /// The console's own identifier of it: 38 characters with braces.
    QString id;
    WbemCallResultPtr result;
};

} // namespace quenvolta
