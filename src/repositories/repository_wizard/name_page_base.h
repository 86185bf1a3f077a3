#pragma once

#include "ui/wizard_page.h"

#include <memory>

class QLineEdit;

namespace Ui
{
class RepositoryNamePage;
}

namespace quenvolta::RepositoryWizard
{

class IcRepositoryWizard;

/// Asks for the name of the repository, which must be a valid one that no other repository has.
class CNamePageBase : public CWizardPage
{
    Q_OBJECT

public:
    ~CNamePageBase() override;

    QString Name() const;

    bool isComplete() const override;

protected:
    CNamePageBase(IcRepositoryWizard& wizard, int subTitle);

    bool OnNext() override;
    IcRepositoryWizard& Wizard() const { return m_wizard; }
    QLineEdit& NameField() const;

private:
    IcRepositoryWizard& m_wizard;
    std::unique_ptr<Ui::RepositoryNamePage> m_ui;
};

} // namespace quenvolta::RepositoryWizard
