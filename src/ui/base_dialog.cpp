#include "ui/base_dialog.h"

#include "ui/arrow_cursor.h"

#include <QScreen>
#include <QShowEvent>

namespace quenvolta
{

CBaseDialog::CBaseDialog(QWidget* parent)
    : QDialog(parent)
{
    m_messages.SetParent(this);
    setSizeGripEnabled(true);
}

int CBaseDialog::exec()
{
    const ArrowCursor cursor;
    return QDialog::exec();
}

void CBaseDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (!event->spontaneous())
        setMinimumSize(size().boundedTo(screen()->availableSize()));
}

} // namespace quenvolta
