#include "repositories/repository_wizard/adjust_svn_permissions_page.h"

namespace quenvolta::RepositoryWizard
{

CAdjustSvnPermissionsPage::CAdjustSvnPermissionsPage(IcRepositoryWizard& wizard)
    : CAdjustPermissionsPageBase(wizard, LoadString(StringId::kAllUsersHaveAccess), StringId::kSvnPermissionsNote)
{
}

} // namespace quenvolta::RepositoryWizard
