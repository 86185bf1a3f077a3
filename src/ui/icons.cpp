#include "ui/icons.h"

#include <QDir>

// The linker takes the compiled icons out of their library only when they are named (outside any namespace).
static void LoadIcons()
{
    Q_INIT_RESOURCE(icons);
}

namespace quenvolta
{

using namespace Qt::StringLiterals;

QIcon IconResource(int number)
{
    LoadIcons();
    const QDir folder(u":/icons"_s);
    const QStringList found = folder.entryList({u"%1-*.svg"_s.arg(number)});
    QIcon icon;
    if (!found.isEmpty()) {
        const QString file = folder.filePath(found.first());
        icon.addFile(file);
        icon.addFile(file, {}, QIcon::Selected); // else the style would tint the icon of a selected item
    }
    return icon;
}

QIcon IconNamed(const QString& name)
{
    LoadIcons();
    return QIcon(u":/icons/%1.svg"_s.arg(name));
}

} // namespace quenvolta
