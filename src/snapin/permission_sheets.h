#pragma once

namespace quenvolta
{

struct DialogRequest;

/// The property sheet of the whole server's permissions. True when it ended with OK.
bool ShowGlobalPermissions(const DialogRequest& request);

/// The property sheet of a repository or of what is in it, at the request's page. True when it ended with OK.
bool ShowRepositoryProperties(const DialogRequest& request);

} // namespace quenvolta
