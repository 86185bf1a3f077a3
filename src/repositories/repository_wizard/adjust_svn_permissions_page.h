#pragma once

#include "repositories/repository_wizard/adjust_permissions_page_base.h"

namespace quenvolta::RepositoryWizard
{

/// The permissions where the server has its own users.
class CAdjustSvnPermissionsPage final : public CAdjustPermissionsPageBase
{
    Q_OBJECT

public:
    explicit CAdjustSvnPermissionsPage(IcRepositoryWizard& wizard);

protected:
    Account ExplicitAccount() const override { return {AccountKind::Everyone, {}}; }
};

} // namespace quenvolta::RepositoryWizard
