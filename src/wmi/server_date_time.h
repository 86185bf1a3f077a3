#pragma once

#include "foundation/file_time.h"

#include <QDateTime>
#include <QString>

namespace quenvolta
{

/// A date and time as the server sent it.
struct ServerDateTime {
    int year = 1601;
    int month = 1;
    int day = 1;
    int hours = 0;
    int minutes = 0;
    int seconds = 0;
    int microseconds = 0;
    /// Minutes that the time is ahead of UTC.
    int utcOffset = 0;
};

/// Reads the standard text yyyymmddHHMMSS.mmmmmmsUUU; ComException when it is none.
ServerDateTime ParseServerDateTime(const QString& text);

/// The moment, to the millisecond. Win32Exception when the fields are no date.
FileTime ToFileTime(const ServerDateTime& dateTime);

/// The moment in the local time zone, for display. Win32Exception for a time outside the platform's range,
/// SimpleException for one outside the calendar's (after the year 9999).
QDateTime ToLocalDateTime(FileTime time);

} // namespace quenvolta
