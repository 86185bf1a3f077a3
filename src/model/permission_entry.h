#pragma once

#include "model/account.h"

#include <QList>

#include <cstdint>

namespace quenvolta
{

/// A server may send other numbers; they are kept.
enum class AccessLevel : std::uint32_t {
    NoAccess = 0,
    ReadOnly = 1,
    ReadWrite = 2,
};

/// One line of a permission list.
struct PermissionEntry {
    Account account = {};
    AccessLevel accessLevel = AccessLevel::NoAccess;

    bool operator==(const PermissionEntry&) const = default;
};

/// In the server's order.
using PermissionList = QList<PermissionEntry>;

} // namespace quenvolta
