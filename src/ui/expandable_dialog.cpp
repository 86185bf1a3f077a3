#include "ui/expandable_dialog.h"

#include <QAbstractButton>
#include <QLayout>

namespace quenvolta
{

void CExpandableDialog::SetDetails(QWidget& area, QAbstractButton& button)
{
    area.hide();
    button.setCheckable(true);
    connect(&button, &QAbstractButton::toggled, this, [this, &area](bool shown) { ShowDetails(area, shown); });
}

void CExpandableDialog::ShowDetails(QWidget& area, bool shown)
{
    const int extent = area.sizeHint().height() + layout()->spacing();
    const int change = shown ? extent : -extent;
    const QSize wanted(width(), height() + change);
    area.setVisible(shown);
    setMinimumHeight(minimumHeight() + change);
    resize(wanted);
}

} // namespace quenvolta
