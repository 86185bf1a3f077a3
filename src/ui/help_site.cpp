#include "ui/help_site.h"

#include "ui/string_table.h"

#include <QDesktopServices>
#include <QLabel>

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

QUrl HelpTopicUrl(int topic)
{
    return HelpUrl(u"/go/%1/"_s.arg(topic));
}

void LinkToHelp(QLabel& label, int topic)
{
    QObject::connect(&label, &QLabel::linkActivated, &label, [topic] { OpenAddress(HelpTopicUrl(topic)); });
}

void OpenAddress(const QUrl& address)
{
    QDesktopServices::openUrl(address);
}

} // namespace quenvolta
