#include "platform/wbem/wbem_date_time.h"

#include <QDate>
#include <QRegularExpression>
#include <QTime>

namespace quenvolta
{

HRESULT SWbemDateTime::PutValue(const QString& text)
{
    static const QRegularExpression kPattern(
        QStringLiteral("^([0-9]{4})([0-9]{2})([0-9]{2})([0-9]{2})([0-9]{2})([0-9]{2})\\.([0-9]{6})([+-][0-9]{3})\\z"));
    const QRegularExpressionMatch match = kPattern.match(text);
    if (!match.hasMatch())
        return WBEM_E_INVALID_PARAMETER;
    const auto field = [&match](int index) { return match.capturedView(index).toInt(); };
    if (field(1) < 1601 || !QDate::isValid(field(1), field(2), field(3)) ||
        !QTime::isValid(field(4), field(5), field(6)))
        return WBEM_E_INVALID_PARAMETER;
    m_year = field(1);
    m_month = field(2);
    m_day = field(3);
    m_hours = field(4);
    m_minutes = field(5);
    m_seconds = field(6);
    m_microseconds = field(7);
    m_utc = field(8);
    return S_OK;
}

} // namespace quenvolta
