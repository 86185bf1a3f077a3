#pragma once

class QAbstractButton;
class QDialogButtonBox;
class QLabel;

namespace quenvolta
{

/// Adds "Details" to the buttons of a dialog that commits, and leads the link of its note on hooks to the help.
QAbstractButton& AddDetailsButton(QDialogButtonBox& buttons, QLabel& hooksNote);

} // namespace quenvolta
