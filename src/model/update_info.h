#pragma once

#include <QString>

#include <cstdint>

namespace quenvolta
{

enum class UpdateCheckStatus : std::int32_t {
    NotChecked = 0, ///< no answer yet
    UpdateAvailable = 1,
    UpToDate = 2,
    Failed = 3,
};

/// A moment that may be missing or wrong.
struct UpdateDate {
    enum class Status { Null, Valid, Invalid };

    Status status = Status::Null;
    /// Days since 1899-12-30, local time. Counts for a valid date alone.
    double days = 0;

    bool operator==(const UpdateDate&) const = default;
};

/// What the last update check found.
struct UpdateInfo {
    UpdateCheckStatus status = UpdateCheckStatus::NotChecked;
    // As the service spells them; empty unless there is an update.
    QString version = {};
    UpdateDate date = {};
    QString learnMorePath = {};
    QString downloadPath = {};
    /// Why the check failed.
    QString errorText = {};

    bool operator==(const UpdateInfo&) const = default;
};

} // namespace quenvolta
