#pragma once

#include "platform/hresult.h"

#include <QString>

namespace quenvolta
{

/// Reads the management standard's date-time text, yyyymmddHHMMSS.mmmmmmsUUU: six digits of microseconds, then
/// the sign and the minutes of the offset from UTC.
class SWbemDateTime
{
public:
    /// WBEM_E_INVALID_PARAMETER when the text is no date-time; the object is unchanged then. Ranges are checked
    /// field by field, the day against its month.
    HRESULT PutValue(const QString& text);

    int Year() const { return m_year; }
    int Month() const { return m_month; }
    int Day() const { return m_day; }
    int Hours() const { return m_hours; }
    int Minutes() const { return m_minutes; }
    int Seconds() const { return m_seconds; }
    int Microseconds() const { return m_microseconds; }
    /// Minutes that the local time is ahead of UTC.
    int UTC() const { return m_utc; }

private:
    int m_year = 0;
    int m_month = 0;
    int m_day = 0;
    int m_hours = 0;
    int m_minutes = 0;
    int m_seconds = 0;
    int m_microseconds = 0;
    int m_utc = 0;
};

} // namespace quenvolta
