#pragma once

namespace quenvolta
{

/// What is known of an object's permission entries.
enum class PermissionState {
    Unknown = 0,       ///< the server is older than 2.6
    InheritedOnly = 1, ///< it has none of its own
    Explicit = 2,      ///< it has entries of its own
};

} // namespace quenvolta
