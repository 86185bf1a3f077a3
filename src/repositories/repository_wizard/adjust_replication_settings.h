#pragma once

#include "accounts/account_list_model.h"
#include "ui/wizard_page.h"

#include <memory>

namespace Ui
{
class AdjustReplicationSettings;
}

namespace quenvolta::RepositoryWizard
{

class IcRepositoryWizard;

/// Asks who may replicate a master. Next creates the master.
class CAdjustReplicationSettings final : public CWizardPage
{
    Q_OBJECT

public:
    explicit CAdjustReplicationSettings(IcRepositoryWizard& wizard);
    ~CAdjustReplicationSettings() override;

    /// Security identifiers in the list's order.
    QStringList Replicators() const;

protected:
    bool OnNext() override;

private:
    void Add();
    void Remove();
    void UpdateButtons();

    IcRepositoryWizard& m_wizard;
    std::unique_ptr<Ui::AdjustReplicationSettings> m_ui;
    AccountListModel m_accounts;
};

} // namespace quenvolta::RepositoryWizard
