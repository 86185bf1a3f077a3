#include "accounts/computer_picker_dlg.h"

#include "ui/string_table.h"

#include <utility>

namespace quenvolta
{

CComputerPickerDlg::CComputerPickerDlg(QWidget* parent, DirectoryOpener open)
    : CObjectPickerDlg(parent, std::move(open), StringId::kPickComputer,
                       {{StringId::kScopeComputers, {DirectoryObjectKind::Host}}}, Selection::One)
{
}

bool CComputerPickerDlg::Show()
{
    return Pick();
}

QString CComputerPickerDlg::ComputerName() const
{
    return Picked().isEmpty() ? QString() : NameOf(Picked().constFirst());
}

} // namespace quenvolta
