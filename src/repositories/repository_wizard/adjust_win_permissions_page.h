#pragma once

#include "repositories/current_account.h"
#include "repositories/repository_wizard/adjust_permissions_page_base.h"

namespace quenvolta::RepositoryWizard
{

/// The permissions where the users are those of the managed computer.
class CAdjustWinPermissionsPage final : public CAdjustPermissionsPageBase
{
    Q_OBJECT

public:
    explicit CAdjustWinPermissionsPage(IcRepositoryWizard& wizard);

    void OnActivate() override;

protected:
    Account ExplicitAccount() const override { return {AccountKind::WindowsAccount, m_current.sid}; }

private:
    CurrentAccount m_current;
};

} // namespace quenvolta::RepositoryWizard
