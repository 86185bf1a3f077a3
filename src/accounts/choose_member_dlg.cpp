#include "accounts/choose_member_dlg.h"

#include "model/model.h"

namespace quenvolta
{

CChooseMemberDlg::CChooseMemberDlg(QWidget* parent, CModel& model)
    : CChooseAccountsDlg(parent, model, StringId::kColumnName, false)
{
    CChooseMemberDlg::Load();
}

void CChooseMemberDlg::AddSections()
{
    const QStringList users = Model().GetUsers();
    const QStringList groups = Model().GetGroups();
    AddSection(StringId::kGroupsName, AccountKind::Group, groups);
    AddSection(StringId::kUsersName, AccountKind::User, users);
}

} // namespace quenvolta
