#pragma once

#include <QStringList>

namespace quenvolta
{

/// A repository's delegation or replication: whether it is on, and for whom.
struct RoleSettings {
    bool enabled = false;
    /// Security identifiers of Windows accounts, in the server's order.
    QStringList accounts = {};

    bool operator==(const RoleSettings&) const = default;
};

} // namespace quenvolta
