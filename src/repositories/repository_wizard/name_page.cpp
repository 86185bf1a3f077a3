#include "repositories/repository_wizard/name_page.h"

namespace quenvolta::RepositoryWizard
{

CNamePage::CNamePage(IcRepositoryWizard& wizard)
    : CNamePageBase(wizard, StringId::kNamePageSubTitle)
{
}

} // namespace quenvolta::RepositoryWizard
