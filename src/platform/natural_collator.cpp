#include "platform/natural_collator.h"

namespace quenvolta
{

QCollator NaturalCollator()
{
    // The C locale compares code points and knows no numbers.
    const QLocale locale;
    QCollator collator(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

} // namespace quenvolta
