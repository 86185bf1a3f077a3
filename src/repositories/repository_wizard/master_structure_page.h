#pragma once

#include "repositories/repository_wizard/choices.h"
#include "ui/wizard_page.h"

#include <memory>

namespace Ui
{
class MasterStructurePage;
}

namespace quenvolta::RepositoryWizard
{

class IcRepositoryWizard;

/// Asks for the layout of a master, or for the repository whose data it gets.
class CMasterStructurePage final : public CWizardPage
{
    Q_OBJECT

public:
    explicit CMasterStructurePage(IcRepositoryWizard& wizard);
    ~CMasterStructurePage() override;

    InitialContent Content() const;
    QString ImportPath() const;

    void OnActivate() override;
    bool isComplete() const override;

protected:
    bool OnNext() override;

private:
    void Browse();
    void UpdatePathField();

    IcRepositoryWizard& m_wizard;
    std::unique_ptr<Ui::MasterStructurePage> m_ui;
};

} // namespace quenvolta::RepositoryWizard
