#pragma once

#include "model/permission_entry.h"
#include "model/tree_position.h"

#include <QList>
#include <QString>

#include <optional>

namespace quenvolta
{

class IcSecurityPageHost;

/// What the nearest object above grants an account.
struct InheritedLevel {
    AccessLevel level = AccessLevel::NoAccess;
    /// Where it is set.
    TreePosition from = {};

    bool operator==(const InheritedLevel&) const = default;
};

/// One account of the permission editor. It has a level of its own, an inherited one, or both.
struct PermissionItem {
    Account account = {};
    /// How the account is shown.
    QString name = {};
    std::optional<AccessLevel> explicitLevel = {};
    std::optional<InheritedLevel> inherited = {};

    /// The level that counts.
    std::optional<AccessLevel> ShownLevel() const
    {
        return explicitLevel || !inherited ? explicitLevel : std::optional(inherited->level);
    }
};

/// Reads every account that has access to the host's object: set there, or inherited from the nearest object above that
/// names the account.
QList<PermissionItem> LoadPermissionItems(IcSecurityPageHost& host);

/// How accounts are shown, in their order.
QStringList AccountNames(IcSecurityPageHost& host, const QList<Account>& accounts);

} // namespace quenvolta
