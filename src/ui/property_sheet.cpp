#include "ui/property_sheet.h"

#include "ui/base_property_page.h"
#include "ui_property_sheet.h"

#include <QLayout>
#include <QPushButton>
#include <QShowEvent>

#include <algorithm>

namespace quenvolta
{

CPropertySheet::CPropertySheet(QWidget* parent, const QString& title, ApplyButton apply)
    : CBaseDialog(parent)
    , m_ui(std::make_unique<Ui::PropertySheet>())
{
    m_ui->setupUi(this);
    setWindowTitle(title);
    QPushButton* button = m_ui->buttons->button(QDialogButtonBox::Apply);
    button->setVisible(apply == ApplyButton::With);
    connect(button, &QPushButton::clicked, this, &CPropertySheet::ApplyPages);
    connect(m_ui->tabs, &QTabWidget::currentChanged, this, [this] {
        if (isVisible())
            CreateShownPage();
    });
    UpdateApplyButton();
}

CPropertySheet::~CPropertySheet() = default;

void CPropertySheet::AddPage(std::unique_ptr<CBasePropertyPageImpl> page)
{
    page->setEnabled(false); // until it was read
    connect(page.get(), &CBasePropertyPageImpl::ModifiedChanged, this, &CPropertySheet::UpdateApplyButton);
    const QString title = page->windowTitle();
    m_ui->tabs->addTab(page.release(), title);
}

void CPropertySheet::SetActivePage(int index)
{
    m_ui->tabs->setCurrentIndex(index);
}

void CPropertySheet::accept()
{
    if (ApplyPages())
        CBaseDialog::accept();
}

void CPropertySheet::showEvent(QShowEvent* event)
{
    if (!event->spontaneous())
        FitPages();
    CBaseDialog::showEvent(event);
    // From the event loop: a failure's message box belongs to the sheet, which must be there first.
    QMetaObject::invokeMethod(this, &CPropertySheet::CreateShownPage, Qt::QueuedConnection);
}

// Tabs don't ask how high their pages' wrapped texts become.
void CPropertySheet::FitPages()
{
    ensurePolished();
    adjustSize();
    layout()->activate();
    int missing = 0;
    for (int i = 0; i < m_ui->tabs->count(); ++i) {
        const QLayout* rows = PageAt(i)->layout();
        const QSize given = m_ui->tabs->currentWidget()->size();
        if (rows != nullptr && rows->hasHeightForWidth())
            missing = std::max(missing, rows->minimumHeightForWidth(given.width()) - given.height());
    }
    resize(width(), height() + missing);
}

CBasePropertyPageImpl* CPropertySheet::PageAt(int index) const
{
    return qobject_cast<CBasePropertyPageImpl*>(m_ui->tabs->widget(index));
}

void CPropertySheet::CreateShownPage()
{
    CBasePropertyPageImpl* page = PageAt(m_ui->tabs->currentIndex());
    if (page == nullptr || m_created.contains(page))
        return;
    page->setEnabled(true); // else it could give nothing the focus
    page->setEnabled(Run([page] { page->OnCreatePage(); }));
    if (page->isEnabled())
        m_created.insert(page);
}

bool CPropertySheet::ApplyPages()
{
    for (int i = 0; i < m_ui->tabs->count(); ++i) {
        if (!Run([this, i] { PageAt(i)->Apply(); })) {
            SetActivePage(i);
            return false;
        }
    }
    return true;
}

void CPropertySheet::UpdateApplyButton()
{
    bool modified = false;
    for (int i = 0; i < m_ui->tabs->count(); ++i)
        modified = modified || PageAt(i)->IsModified();
    m_ui->buttons->button(QDialogButtonBox::Apply)->setEnabled(modified);
}

} // namespace quenvolta
