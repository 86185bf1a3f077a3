#pragma once

#include <QLoggingCategory>

namespace quenvolta
{

Q_DECLARE_LOGGING_CATEGORY(logSvn)

} // namespace quenvolta
