#pragma once

#include <QString>
#include <QUrl>

namespace quenvolta
{

/// The address of a page of the help-link site ("/go/2035/"). The site is $QUENVOLTA_HELP_SITE where that is set.
QUrl HelpUrl(const QString& path);

/// A link of our own in a rich text; the label is plain text.
QString LinkTo(const QUrl& target, const QString& label);

/// Opens an address with the desktop's program for it.
void OpenAddress(const QUrl& address);

} // namespace quenvolta
