#include "repositories/repository_wizard/name_page_base.h"

#include "repositories/repository_name_rule.h"
#include "repositories/repository_wizard/repository_wizard_interface.h"
#include "ui_repository_name_page.h"

namespace quenvolta::RepositoryWizard
{

CNamePageBase::CNamePageBase(IcRepositoryWizard& wizard, int subTitle)
    : m_wizard(wizard)
    , m_ui(std::make_unique<Ui::RepositoryNamePage>())
{
    m_ui->setupUi(this);
    setSubTitle(LoadString(subTitle));
    connect(m_ui->name, &QLineEdit::textChanged, this, &CNamePageBase::completeChanged);
}

CNamePageBase::~CNamePageBase() = default;

QString CNamePageBase::Name() const
{
    return m_ui->name->text();
}

bool CNamePageBase::isComplete() const
{
    return !Name().isEmpty();
}

bool CNamePageBase::OnNext()
{
    if (!IsValidRepositoryName(Name()))
        return Refuse(*m_ui->name, StringId::kInvalidRepositoryName);
    if (m_wizard.RepositoryExists(Name()))
        return Refuse(*m_ui->name, StringId::kRepositoryExists, Name());
    return true;
}

QLineEdit& CNamePageBase::NameField() const
{
    return *m_ui->name;
}

} // namespace quenvolta::RepositoryWizard
