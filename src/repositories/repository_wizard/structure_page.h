#pragma once

#include "ui/wizard_page.h"

#include <memory>

namespace Ui
{
class StructurePage;
}

namespace quenvolta::RepositoryWizard
{

/// Asks for the layout of a repository of its own.
class CStructurePage final : public CWizardPage
{
    Q_OBJECT

public:
    CStructurePage();
    ~CStructurePage() override;

    bool IsSingleProject() const;

private:
    std::unique_ptr<Ui::StructurePage> m_ui;
};

} // namespace quenvolta::RepositoryWizard
