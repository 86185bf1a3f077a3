#include "accounts/add_permission_dlg.h"

#include "model/model.h"

namespace quenvolta
{

CAddPermissionDlg::CAddPermissionDlg(QWidget* parent, CModel& model, CreateUserButton button)
    : CChooseAccountsDlg(parent, model, StringId::kColumnUserName, button == CreateUserButton::With)
{
    CAddPermissionDlg::Load();
}

void CAddPermissionDlg::AddSections()
{
    const QStringList users = Model().GetUsers();
    const QStringList groups = Model().GetGroups();
    AddSection(StringId::kSpecialAccounts, AccountKind::Everyone, {LoadString(StringId::kEveryone)});
    AddSection(StringId::kGroupsName, AccountKind::Group, groups);
    AddSection(StringId::kUsersName, AccountKind::User, users);
}

} // namespace quenvolta
