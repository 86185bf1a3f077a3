#pragma once

#include "dashboard/status_snapshot.h"

#include <QString>

namespace quenvolta
{

// The status of the server in words.

QString QdfsServiceText(const ServiceStatus& service);
QString AuthenticationText(const CStatusSnapshot& status);
QString LoggingText(const ServerSettings& settings);
QString RepositoriesText(const CStatusSnapshot& status);
/// What kind of failure it is.
QString FailureTitle(StatusError error);
/// What to do about it; empty where there is no advice.
QString FailureAdvice(StatusError error);

} // namespace quenvolta
