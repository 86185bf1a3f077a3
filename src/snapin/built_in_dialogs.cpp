#include "snapin/dialogs.h"
#include "snapin/select_computer_dlg.h"

namespace quenvolta
{

namespace
{

bool SelectComputer(const DialogRequest& request)
{
    CSelectComputerDlg dialog(request.model, request.preferences, request.shell, request.messages, request.parent);
    return dialog.exec() == QDialog::Accepted;
}

/// A line for each dialog that there is.
DialogTable MakeTable()
{
    DialogTable table;
    table.Add(DialogKind::SelectComputer, &SelectComputer);
    return table;
}

} // namespace

const DialogTable& DialogTable::BuiltIn()
{
    static const DialogTable table = MakeTable();
    return table;
}

} // namespace quenvolta
