#include "host/dark_palette.h"

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>

namespace quenvolta
{

using namespace Qt::StringLiterals;

void UseDarkPalette()
{
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    const QColor text(0xe6, 0xe8, 0xea);
    const QColor faint(0x8a, 0x90, 0x96);
    QPalette palette(QColor(0x2b, 0x2e, 0x31), QColor(0x2b, 0x2e, 0x31)); // from which the style takes its shades
    palette.setColor(QPalette::Base, QColor(0x1f, 0x21, 0x23));
    palette.setColor(QPalette::AlternateBase, QColor(0x25, 0x28, 0x2a));
    palette.setColor(QPalette::ToolTipBase, QColor(0x37, 0x3b, 0x3f));
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xb5));
    palette.setColor(QPalette::Link, QColor(0x6c, 0xb2, 0xf5));
    palette.setColor(QPalette::LinkVisited, QColor(0xb7, 0x9a, 0xf0));
    palette.setColor(QPalette::PlaceholderText, faint);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                           QPalette::ToolTipText, QPalette::HighlightedText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, faint);
    }
    QApplication::setPalette(palette);
}

} // namespace quenvolta
