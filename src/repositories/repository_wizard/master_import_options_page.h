#pragma once

#include "repositories/repository_wizard/choices.h"
#include "ui/wizard_page.h"

#include <memory>

namespace Ui
{
class MasterImportOptionsPage;
}

namespace quenvolta::RepositoryWizard
{

/// Asks what an import brings along besides the data.
class CMasterImportOptionsPage final : public CWizardPage
{
    Q_OBJECT

public:
    CMasterImportOptionsPage();
    ~CMasterImportOptionsPage() override;

    ImportOptions Options() const;

private:
    std::unique_ptr<Ui::MasterImportOptionsPage> m_ui;
};

} // namespace quenvolta::RepositoryWizard
