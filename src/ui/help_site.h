#pragma once

#include <QString>
#include <QUrl>

class QLabel;

namespace quenvolta
{

/// The address of a page of the help-link site ("/go/2035/"). The site is $QUENVOLTA_HELP_SITE where that is set.
QUrl HelpUrl(const QString& path);

/// A link of our own in a rich text; the label is plain text.
QString LinkTo(const QUrl& target, const QString& label);

/// The address of the help page of a number.
QUrl HelpTopicUrl(int topic);

/// The links of the label open the help page of the number.
void LinkToHelp(QLabel& label, int topic);

/// Opens an address with the desktop's program for it.
void OpenAddress(const QUrl& address);

} // namespace quenvolta
