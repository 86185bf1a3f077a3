#include "snapin/natural_order.h"

#include <QLocale>

namespace quenvolta
{

namespace
{

// The C locale compares code points and knows no numbers.
QLocale CollationLocale()
{
    const QLocale locale;
    return locale.language() == QLocale::C ? QLocale(QLocale::English) : locale;
}

} // namespace

NaturalOrder::NaturalOrder()
    : m_collator(CollationLocale())
    , m_hasPlainOrder(m_collator.locale().language() == QLocale::English)
{
    m_collator.setNumericMode(true);
    m_collator.setCaseSensitivity(Qt::CaseInsensitive);
}

} // namespace quenvolta
