#pragma once

#include "model/server_settings.h"
#include "model/server_version_info.h"
#include "model/service_status.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace quenvolta
{

class CModel;
class Exception;

/// What kind of failure ended a reading of the status.
enum class StatusError {
    None = 0,
    General = 1,
    Unreachable = 2,
    AccessDenied = 3,
    BrokenManagement = 4,
    NotInstalled = 5,
};

/// The kind of a failure of the status reading.
StatusError StatusErrorOf(const Exception& exception);

/// The status of the server as it was when it was last read.
struct CStatusSnapshot {
    /// Reads everything; what failed is in the result.
    static CStatusSnapshot Read(CModel& model);
    /// Reads only the counts anew.
    void ReadCounts(CModel& model);

    /// False when the server can't be managed; then only the error counts.
    bool isRead = false;
    StatusError error = StatusError::None;
    QString errorText;

    std::uint32_t httpServiceState = 0;
    /// Absent on servers older than 3.0.
    std::optional<ServiceStatus> qdfsService;
    ServerSettings settings;
    ServerVersionInfo versions;

    qsizetype repositoryCount = 0;
    /// Empty when the repositories were counted.
    QString repositoriesFailure;
    // Under Subversion authentication only.
    qsizetype userCount = 0;
    qsizetype groupCount = 0;
    QString accountsFailure;
};

} // namespace quenvolta
