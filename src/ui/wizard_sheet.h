#pragma once

#include "ui/message_boxes.h"

#include <QWizard>

namespace quenvolta
{

class CWizardPage;

/// The base of wizards: pages with a header, a help button for pages that have help, and a last page that only tells
/// what was done. The page whose Next does the work is a commit page: there is no way back behind it.
class CWizardSheet : public QWizard
{
    Q_OBJECT

public:
    CWizardSheet(QWidget* parent, const QString& title);

    int exec() override;
    /// On the last page there is nothing left to cancel: closing it ends the wizard as Finish does.
    void reject() override;

protected:
    /// Takes the page over. The first page that is added is shown first.
    void AddPage(int id, CWizardPage* page);
    /// The page's Next carries out what the wizard is for. Without a label of its own it reads as on other pages.
    void MakeWorkPage(CWizardPage& page, const QString& label = {});
    /// The page tells what was done.
    static void MakeSummaryPage(CWizardPage& page);

private:
    void Activate();
    CWizardPage* ShownPage() const;
    void FitPages();
    void showEvent(QShowEvent* event) override;

    CMessageBoxes m_messages;
};

} // namespace quenvolta
