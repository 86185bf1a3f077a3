#pragma once

#include "ui/wizard_page.h"

#include <memory>

namespace Ui
{
class QdfsRolePage;
}

namespace quenvolta::RepositoryWizard
{

/// Asks for the role of a distributed repository.
class CQdfsRolePage final : public CWizardPage
{
    Q_OBJECT

public:
    CQdfsRolePage();
    ~CQdfsRolePage() override;

    bool IsMaster() const;

private:
    std::unique_ptr<Ui::QdfsRolePage> m_ui;
};

} // namespace quenvolta::RepositoryWizard
