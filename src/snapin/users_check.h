#pragma once

namespace quenvolta
{

struct DialogRequest;
struct NodeServices;

/// Before an address of the server is used: somebody must be able to sign in. Where nobody can, the person chooses what
/// to do. False when the address is not to be used.
bool CheckForUsers(const NodeServices& services, const DialogRequest& request);

} // namespace quenvolta
