#include "ui/field_focus.h"

#include <QLineEdit>

namespace quenvolta
{

void FocusOn(QWidget& field)
{
    field.setFocus();
    if (auto* edit = qobject_cast<QLineEdit*>(&field))
        edit->selectAll();
}

} // namespace quenvolta
