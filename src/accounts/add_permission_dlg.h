#pragma once

#include "accounts/choose_accounts_dlg.h"

namespace quenvolta
{

/// The chooser of Subversion accounts for permissions: everyone, groups and users.
class CAddPermissionDlg final : public CChooseAccountsDlg
{
public:
    enum class CreateUserButton : bool { Without, With };

    CAddPermissionDlg(QWidget* parent, CModel& model, CreateUserButton button = CreateUserButton::With);

protected:
    void AddSections() override;
};

} // namespace quenvolta
