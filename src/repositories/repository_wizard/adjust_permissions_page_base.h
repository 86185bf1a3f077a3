#pragma once

#include "repositories/repository_wizard/permissions_host.h"
#include "ui/wizard_page.h"

#include <memory>

namespace Ui
{
class AdjustPermissionsPage;
}

namespace quenvolta::RepositoryWizard
{

class IcRepositoryWizard;

/// Asks who may use the new repository. Next creates a repository that needs no more answers.
class CAdjustPermissionsPageBase : public CWizardPage
{
    Q_OBJECT

public:
    ~CAdjustPermissionsPageBase() override;

    /// The entries of the chosen option.
    PermissionList Permissions() const;

    void OnActivate() override;

protected:
    CAdjustPermissionsPageBase(IcRepositoryWizard& wizard, const QString& explicitOption, int note);

    bool OnNext() override;
    /// The one entry of the second option.
    virtual Account ExplicitAccount() const = 0;
    IcRepositoryWizard& Wizard() const { return m_wizard; }
    /// An option that can't be chosen gives way to the first one.
    void SetExplicitOption(const QString& text, bool enabled);

private:
    void Customize();
    int DefaultOptionText() const;

    IcRepositoryWizard& m_wizard;
    CPermissionsHost m_host;
    std::unique_ptr<Ui::AdjustPermissionsPage> m_ui;
};

} // namespace quenvolta::RepositoryWizard
