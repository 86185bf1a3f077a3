#pragma once

#include "ui/wizard_page.h"

#include <memory>

namespace Ui
{
class RepositorySummaryPage;
}

namespace quenvolta::RepositoryWizard
{

/// Tells what was created.
class CSummaryPage final : public CWizardPage
{
    Q_OBJECT

public:
    CSummaryPage();
    ~CSummaryPage() override;

    void SetText(const QString& text);

private:
    std::unique_ptr<Ui::RepositorySummaryPage> m_ui;
};

} // namespace quenvolta::RepositoryWizard
