#pragma once

class QWidget;

namespace quenvolta
{

/// Gives a field the focus; the text of a line is selected.
void FocusOn(QWidget& field);

} // namespace quenvolta
