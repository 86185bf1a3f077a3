#pragma once

#include "ui/wizard_page.h"

#include <memory>

namespace Ui
{
class RepositoryTypePage;
}

namespace quenvolta::RepositoryWizard
{

class IcRepositoryWizard;

/// Asks for the type of the repository.
class CRepositoryTypePage final : public CWizardPage
{
    Q_OBJECT

public:
    explicit CRepositoryTypePage(IcRepositoryWizard& wizard);
    ~CRepositoryTypePage() override;

    bool IsFsfs() const;
    bool IsQdfs() const;

    void OnActivate() override;

private:
    IcRepositoryWizard& m_wizard;
    std::unique_ptr<Ui::RepositoryTypePage> m_ui;
};

} // namespace quenvolta::RepositoryWizard
