#include "repositories/repository_wizard/adjust_win_permissions_page.h"

#include "repositories/repository_wizard/repository_wizard_interface.h"

namespace quenvolta::RepositoryWizard
{

CAdjustWinPermissionsPage::CAdjustWinPermissionsPage(IcRepositoryWizard& wizard)
    : CAdjustPermissionsPageBase(wizard, LoadString(StringId::kCurrentUserHasAccess, QString()),
                                 StringId::kWinPermissionsNote)
{
}

void CAdjustWinPermissionsPage::OnActivate()
{
    CAdjustPermissionsPageBase::OnActivate();
    if (m_current.sid.isEmpty())
        m_current = FindCurrentAccount(Wizard().GetModel());
    SetExplicitOption(LoadString(StringId::kCurrentUserHasAccess, m_current.shownName), !m_current.sid.isEmpty());
}

} // namespace quenvolta::RepositoryWizard
