#include "ui/summary_text.h"

#include "ui/help_site.h"
#include "ui/string_table.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QRegularExpression>
#include <QTextCursor>

namespace quenvolta
{

using namespace Qt::StringLiterals;

SummaryText::SummaryText(QWidget* parent)
    : QTextBrowser(parent)
{
    setOpenLinks(false);
    setUndoRedoEnabled(false);
    connect(this, &QTextBrowser::anchorClicked, this, &OpenAddress);
}

void SummaryText::SetText(const QString& text)
{
    static const QRegularExpression address(u"https?://\\S+"_s);
    clear();
    QTextCursor cursor(document());
    const QTextCharFormat plain;
    qsizetype written = 0;
    for (auto matches = address.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        cursor.insertText(text.sliced(written, match.capturedStart() - written), plain);
        QTextCharFormat link;
        link.setAnchor(true);
        link.setAnchorHref(match.captured());
        link.setForeground(palette().link());
        link.setFontUnderline(true);
        cursor.insertText(match.captured(), link);
        written = match.capturedEnd();
    }
    cursor.insertText(text.sliced(written), plain);
    moveCursor(QTextCursor::Start);
}

QString SummaryText::LinkFor(const QContextMenuEvent& event) const
{
    if (event.reason() == QContextMenuEvent::Mouse)
        return anchorAt(event.pos());
    return textCursor().charFormat().anchorHref(); // the link that the Tab key has reached
}

void SummaryText::contextMenuEvent(QContextMenuEvent* event)
{
    const QString link = LinkFor(*event);
    if (link.isEmpty()) {
        QTextBrowser::contextMenuEvent(event);
        return;
    }
    QMenu menu(this);
    menu.addAction(LoadString(StringId::kCopyUrl), this, [link] { QGuiApplication::clipboard()->setText(link); });
    menu.exec(event->globalPos());
}

} // namespace quenvolta
