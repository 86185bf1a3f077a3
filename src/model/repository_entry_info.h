#pragma once

#include "model/permission_state.h"

#include <QString>

namespace quenvolta
{

enum class EntryKind {
    File = 1,
    Folder = 2,
};

/// One folder or file inside a repository.
struct RepositoryEntryInfo {
    QString repositoryName = {};
    /// Inside the repository, beginning with "/".
    QString path = {};
    QString name = {};
    /// Empty when the server reports none.
    QString parentPath = {};
    QString url = {};
    EntryKind kind = EntryKind::File;
    PermissionState permissionState = PermissionState::Unknown;

    bool operator==(const RepositoryEntryInfo&) const = default;
};

} // namespace quenvolta

Q_DECLARE_TYPEINFO(quenvolta::RepositoryEntryInfo, Q_RELOCATABLE_TYPE);
