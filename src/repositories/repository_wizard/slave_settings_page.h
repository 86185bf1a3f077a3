#pragma once

#include "ui/wizard_page.h"

#include <memory>

namespace Ui
{
class SlaveSettingsPage;
}

namespace quenvolta
{
class IcPreferences;
}

namespace quenvolta::RepositoryWizard
{

class IcRepositoryWizard;

/// Asks for the master of a slave, and tries to reach it.
class CSlaveSettingsPage final : public CWizardPage
{
    Q_OBJECT

public:
    CSlaveSettingsPage(IcRepositoryWizard& wizard, IcPreferences& preferences);
    ~CSlaveSettingsPage() override;

    QString MasterServer() const;
    QString MasterRepository() const;

    void OnActivate() override;
    bool isComplete() const override;

protected:
    bool OnNext() override;

private:
    void Browse();
    void FillServers();

    IcRepositoryWizard& m_wizard;
    IcPreferences& m_preferences;
    std::unique_ptr<Ui::SlaveSettingsPage> m_ui;
};

} // namespace quenvolta::RepositoryWizard
