#include "repositories/repository_wizard/slave_name_page.h"

#include "repositories/repository_wizard/repository_wizard_interface.h"

#include <QLineEdit>

namespace quenvolta::RepositoryWizard
{

CSlaveNamePage::CSlaveNamePage(IcRepositoryWizard& wizard)
    : CNamePageBase(wizard, StringId::kSlaveNamePageSubTitle)
{
    connect(&NameField(), &QLineEdit::textEdited, this, [this] { m_typed = true; });
}

void CSlaveNamePage::OnActivate()
{
    if (!m_typed)
        NameField().setText(Wizard().GetMasterRepository());
}

bool CSlaveNamePage::OnNext()
{
    if (!CNamePageBase::OnNext())
        return false;
    Wizard().CreateRepository();
    return true;
}

} // namespace quenvolta::RepositoryWizard
