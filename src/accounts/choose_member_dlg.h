#pragma once

#include "accounts/choose_accounts_dlg.h"

namespace quenvolta
{

/// The chooser of a group's members.
class CChooseMemberDlg final : public CChooseAccountsDlg
{
public:
    CChooseMemberDlg(QWidget* parent, CModel& model);

protected:
    void AddSections() override;
};

} // namespace quenvolta
