#pragma once

#include "model/permission_entry.h"
#include "model/tree_position.h"

#include <QString>

namespace quenvolta
{

/// What the model tells its subscribers after a successful change, on the thread that made it. A subscriber
/// overrides what it needs.
class IcModelEvents
{
public:
    virtual ~IcModelEvents() = default;
    virtual void OnRepositoryCreated(const QString& /*name*/) {}
    virtual void OnRepositoryRenamed(const QString& /*oldName*/, const QString& /*newName*/) {}
    virtual void OnRepositoryDeleted(const QString& /*name*/) {}
    virtual void OnRepositoryConverted(const QString& /*name*/) {}
    virtual void OnSecurityChanged(const TreePosition& /*target*/, const PermissionList& /*entries*/) {}
    virtual void OnUserCreated(const QString& /*name*/) {}
    virtual void OnUserDeleted(const QString& /*name*/) {}
    virtual void OnGroupCreated(const QString& /*name*/) {}
    virtual void OnGroupMembersChanged(const QString& /*name*/) {}
    virtual void OnGroupDeleted(const QString& /*name*/) {}
    virtual void OnServerSettingsChanged() {}
    virtual void OnComputerChanged() {}
    virtual void OnUpdateStateChanged() {}
};

} // namespace quenvolta
