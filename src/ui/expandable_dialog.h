#pragma once

#include "ui/base_dialog.h"

class QAbstractButton;

namespace quenvolta
{

/// A dialog with an area of details that a button shows and hides. It opens without them.
class CExpandableDialog : public CBaseDialog
{
    Q_OBJECT

public:
    using CBaseDialog::CBaseDialog;

protected:
    /// To be called once, when the form was set up. The button becomes a switch.
    void SetDetails(QWidget& area, QAbstractButton& button);

private:
    void ShowDetails(QWidget& area, bool shown);
};

} // namespace quenvolta
