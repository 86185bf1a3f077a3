#include "ui/task_dialog.h"

#include "ui/arrow_cursor.h"
#include "ui/help_site.h"
#include "ui/string_table.h"
#include "ui_task_dialog.h"

#include <QStyle>

namespace quenvolta
{

CTaskDialog::CTaskDialog(QWidget* parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::TaskDialog>())
{
    m_ui->setupUi(this);
    setWindowTitle(LoadString(StringId::kCaption));
    const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    m_ui->icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxCritical, nullptr, this).pixmap(size));
    QFont font = m_ui->instruction->font();
    font.setBold(true);
    m_ui->instruction->setFont(font);
    ShowDetails(false);
    connect(m_ui->content, &QLabel::linkActivated, this, [](const QString& link) { OpenAddress(QUrl(link)); });
    connect(m_ui->details, &QPushButton::toggled, this, &CTaskDialog::ShowDetails);
}

CTaskDialog::~CTaskDialog() = default;

void CTaskDialog::SetMainInstruction(const QString& text)
{
    m_ui->instruction->setText(text);
}

void CTaskDialog::SetContent(const QString& text)
{
    m_ui->content->setText(text);
}

void CTaskDialog::SetExpandedInformation(const QString& text)
{
    m_ui->information->setPlainText(text);
    m_ui->details->setVisible(!text.isEmpty());
}

int CTaskDialog::exec()
{
    const ArrowCursor cursor;
    return QDialog::exec();
}

void CTaskDialog::ShowDetails(bool shown)
{
    m_ui->information->setVisible(shown);
    adjustSize();
}

} // namespace quenvolta
