#include "accounts/user_group_picker_dlg.h"

#include "ui/string_table.h"

#include <utility>

namespace quenvolta
{

namespace
{

QList<PickerScope> Scopes(CUserGroupPickerDlg::Computers computers)
{
    using Kind = DirectoryObjectKind;
    QList<PickerScope> scopes{{StringId::kScopeUsersAndGroups, {Kind::User, Kind::Group}}};
    if (computers == CUserGroupPickerDlg::Computers::With) {
        scopes.append({StringId::kScopePrincipals, {Kind::User, Kind::Group, Kind::Computer}});
        scopes.append({StringId::kScopeComputers, {Kind::Computer}});
    }
    return scopes;
}

} // namespace

CUserGroupPickerDlg::CUserGroupPickerDlg(QWidget* parent, DirectoryOpener open, Computers computers)
    : CSidObjectPickerDlg(parent, std::move(open), Scopes(computers))
{
}

} // namespace quenvolta
