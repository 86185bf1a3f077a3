#include "ui/help_site.h"

#include "ui/string_table.h"

#include <QDesktopServices>

namespace quenvolta
{

using namespace Qt::StringLiterals;

QUrl HelpUrl(const QString& path)
{
    QString site = qEnvironmentVariable("QUENVOLTA_HELP_SITE", LoadString(StringId::kHelpSite));
    while (site.endsWith(u'/'))
        site.chop(1);
    return QUrl(site + path);
}

QString LinkTo(const QUrl& target, const QString& label)
{
    return u"<a href=\"%1\">%2</a>"_s.arg(target.toString(QUrl::FullyEncoded).toHtmlEscaped(), label.toHtmlEscaped());
}

void OpenAddress(const QUrl& address)
{
    QDesktopServices::openUrl(address);
}

} // namespace quenvolta
