#pragma once

#include "ui/base_dialog.h"

#include <QSet>

#include <memory>

namespace Ui
{
class PropertySheet;
}

namespace quenvolta
{

class CBasePropertyPageImpl;

/// A dialog of pages behind tabs. OK and Apply write the pages that were changed, in their order; a page that fails is
/// shown, and the sheet stays open. What fails is shown here.
class CPropertySheet final : public CBaseDialog
{
    Q_OBJECT

public:
    enum class ApplyButton : bool { Without, With };

    CPropertySheet(QWidget* parent, const QString& title, ApplyButton apply = ApplyButton::With);
    ~CPropertySheet() override;

    /// Takes the page over.
    void AddPage(std::unique_ptr<CBasePropertyPageImpl> page);
    /// The page that is shown when the sheet opens; the first one if nothing is said.
    void SetActivePage(int index);

    void accept() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    CBasePropertyPageImpl* PageAt(int index) const;
    void FitPages();
    void CreateShownPage();
    bool ApplyPages();
    void UpdateApplyButton();

    std::unique_ptr<Ui::PropertySheet> m_ui;
    QSet<CBasePropertyPageImpl*> m_created;
};

} // namespace quenvolta
