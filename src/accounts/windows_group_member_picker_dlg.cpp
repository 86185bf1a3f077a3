#include "accounts/windows_group_member_picker_dlg.h"

#include "ui/string_table.h"

#include <utility>

namespace quenvolta
{

CWindowsGroupMemberPickerDlg::CWindowsGroupMemberPickerDlg(QWidget* parent, DirectoryOpener open)
    : CSidObjectPickerDlg(parent, std::move(open),
                          {{StringId::kScopeUsersAndGroups, {DirectoryObjectKind::User, DirectoryObjectKind::Group}}})
{
}

} // namespace quenvolta
