#pragma once

#include "foundation/format.h"

#include <QList>
#include <QString>
#include <QStringView>

namespace quenvolta
{

/// Fills the numbered inserts of a text: "%1" to "%99", also with a kind behind it ("%1!d!"); "%%" is a per cent sign.
/// What an insert brings is never read as an insert. An insert without a value stays as it is written.
QString FormatMessage(QStringView text, const QList<FormatArgument>& inserts);

} // namespace quenvolta
