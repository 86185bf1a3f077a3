#include "provider/svn/svn_log.h"

namespace quenvolta
{

Q_LOGGING_CATEGORY(logSvn, "quenvolta.provider.svn")

} // namespace quenvolta
