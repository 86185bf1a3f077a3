#pragma once

#include "accounts/object_picker_dlg.h"

#include <QString>

namespace quenvolta
{

/// Picks one computer by its plain name.
class CComputerPickerDlg : public CObjectPickerDlg
{
public:
    CComputerPickerDlg(QWidget* parent, DirectoryOpener open);

    /// Runs the picker. False when it was cancelled; failures are exceptions.
    bool Show();
    QString ComputerName() const;

protected:
    virtual QString NameOf(const DirectoryObject& computer) const { return computer.name; }
};

} // namespace quenvolta
