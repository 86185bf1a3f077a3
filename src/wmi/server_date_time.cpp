#include "wmi/server_date_time.h"

#include "foundation/com_exception.h"
#include "foundation/simple_exception.h"
#include "foundation/win32_exception.h"
#include "platform/wbem/wbem_date_time.h"

#include <QDate>
#include <QTime>
#include <QTimeZone>

namespace quenvolta
{

namespace
{

// The years that the platform's times and its calendar reach.
constexpr int kFirstYear = 1601;
constexpr int kLastYear = 30827;
constexpr int kLastCalendarYear = 9999;

bool IsPlatformYear(int year)
{
    return year >= kFirstYear && year <= kLastYear;
}

} // namespace

ServerDateTime ParseServerDateTime(const QString& text)
{
    SWbemDateTime value;
    CheckResult(value.PutValue(text));
    return {value.Year(),    value.Month(),   value.Day(),          value.Hours(),
            value.Minutes(), value.Seconds(), value.Microseconds(), value.UTC()};
}

FileTime ToFileTime(const ServerDateTime& dateTime)
{
    const QDate date(dateTime.year, dateTime.month, dateTime.day);
    const QTime time(dateTime.hours, dateTime.minutes, dateTime.seconds, dateTime.microseconds / 1000);
    if (!date.isValid() || !IsPlatformYear(dateTime.year) || !time.isValid())
        throw Win32Exception(ERROR_INVALID_PARAMETER, u"Cannot convert datetime");
    const FileTime local = FileTimeFromUnixMilliseconds(QDateTime(date, time, Qt::UTC).toMSecsSinceEpoch());
    return local - dateTime.utcOffset * kFileTimePerMinute;
}

QDateTime ToLocalDateTime(FileTime time)
{
    const std::int64_t epoch = FileTimeFromUnixMilliseconds(0);
    QDateTime local = QDateTime::fromMSecsSinceEpoch((time - epoch) / kFileTimePerMillisecond).toLocalTime();
    if (time < 0 || !local.isValid() || !IsPlatformYear(local.date().year()))
        throw Win32Exception(ERROR_INVALID_PARAMETER, u"Cannot convert datetime");
    if (local.date().year() > kLastCalendarYear)
        throw SimpleException(u"Cannot convert datetime.");
    return local;
}

} // namespace quenvolta
