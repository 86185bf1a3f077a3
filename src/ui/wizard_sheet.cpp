#include "ui/wizard_sheet.h"

#include "ui/arrow_cursor.h"
#include "ui/guard.h"
#include "ui/help_site.h"
#include "ui/string_table.h"
#include "ui/wizard_page.h"

#include <QAbstractButton>
#include <QScreen>
#include <QShortcut>
#include <QShowEvent>

namespace quenvolta
{

CWizardSheet::CWizardSheet(QWidget* parent, const QString& title)
    : QWizard(parent)
{
    m_messages.SetParent(this);
    setWindowTitle(title);
    setWizardStyle(ModernStyle);
    setOption(HaveHelpButton);
    setOption(NoBackButtonOnStartPage, false);
    setOption(NoBackButtonOnLastPage, false);
    setSizeGripEnabled(true);
    connect(this, &QWizard::currentIdChanged, this, &CWizardSheet::Activate);
    connect(this, &QWizard::helpRequested, this, [this] { OpenAddress(HelpTopicUrl(ShownPage()->HelpTopic())); });
    auto* help = new QShortcut(QKeySequence::HelpContents, this);
    connect(help, &QShortcut::activated, button(HelpButton), &QAbstractButton::click);
}

int CWizardSheet::exec()
{
    const ArrowCursor cursor;
    return QWizard::exec();
}

void CWizardSheet::reject()
{
    if (ShownPage() != nullptr && ShownPage()->isFinalPage())
        accept();
    else
        QWizard::reject();
}

void CWizardSheet::AddPage(int id, CWizardPage* page)
{
    setPage(id, page);
    if (pageIds().size() == 1)
        setStartId(id);
}

void CWizardSheet::MakeWorkPage(CWizardPage& page, const QString& label)
{
    page.setCommitPage(true);
    page.setButtonText(CommitButton, label.isEmpty() ? buttonText(NextButton) : label);
}

void CWizardSheet::MakeSummaryPage(CWizardPage& page)
{
    page.setFinalPage(true);
    page.setButtonText(FinishButton, LoadString(StringId::kWizardFinish));
    page.setButtonText(CancelButton, LoadString(StringId::kWizardClose));
}

CWizardPage* CWizardSheet::ShownPage() const
{
    return qobject_cast<CWizardPage*>(currentPage());
}

void CWizardSheet::Activate()
{
    CWizardPage* page = ShownPage();
    if (page == nullptr)
        return; // the wizard starts anew
    button(HelpButton)->setVisible(page->HelpTopic() != 0);
    button(HelpButton)->setEnabled(page->HelpTopic() != 0);
    Guarded(m_messages, [page] { page->OnActivate(); });
}

void CWizardSheet::FitPages()
{
    // The largest page decides, so that the window keeps its size from page to page.
    QSize largest;
    for (const int id : pageIds()) {
        page(id)->ensurePolished();
        largest = largest.expandedTo(page(id)->sizeHint());
    }
    const QSize frame = sizeHint() - currentPage()->sizeHint();
    setMinimumSize((largest + frame).boundedTo(screen()->availableSize()));
}

void CWizardSheet::showEvent(QShowEvent* event)
{
    QWizard::showEvent(event);
    if (!event->spontaneous())
        FitPages();
}

} // namespace quenvolta
