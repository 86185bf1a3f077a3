#pragma once

#include "model/permission_state.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace quenvolta
{

/// The types of a repository.
inline constexpr std::int32_t kRepositoryTypeFsfs = 0;
inline constexpr std::int32_t kRepositoryTypeQdfsMaster = 1;
inline constexpr std::int32_t kRepositoryTypeQdfsSlave = 2;

/// One repository as the server reports it.
struct RepositoryInfo {
    QString name = {};
    QString url = {};
    /// Absent on servers before 3.0 and when the server reports none.
    std::optional<std::int32_t> type = {};
    /// The latest revision; absent as `type`.
    std::optional<std::int32_t> totalRevisions = {};
    PermissionState permissionState = PermissionState::Unknown;
    /// Present for a slave alone.
    std::optional<QString> masterServer = {};
    std::optional<QString> masterRepository = {};

    bool operator==(const RepositoryInfo&) const = default;
};

} // namespace quenvolta
