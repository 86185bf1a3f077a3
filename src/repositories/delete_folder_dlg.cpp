#include "repositories/delete_folder_dlg.h"

#include "model/model.h"
#include "repositories/commit_details.h"
#include "ui_delete_folder_dlg.h"

#include <QPushButton>
#include <QStyle>

namespace quenvolta
{

CDeleteFolderDlg::CDeleteFolderDlg(QWidget* parent, CModel& model, const TreePosition& folder)
    : CExpandableDialog(parent)
    , m_model(model)
    , m_folder(folder)
    , m_ui(std::make_unique<Ui::DeleteFolderDlg>())
{
    m_ui->setupUi(this);
    const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    m_ui->icon->setPixmap(style()
                              ->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this)
                              .pixmap(QSize(size, size), devicePixelRatioF()));
    m_ui->question->setText(LoadString(StringId::kAskDeleteFolder, m_folder.path.section(u'/', -1)));
    m_ui->message->setPlainText(LoadString(StringId::kDeletedFolder, m_folder.path));
    SetDetails(*m_ui->details, AddDetailsButton(*m_ui->buttons, *m_ui->hooksNote));
    // What can't be taken back is not what Enter does.
    QPushButton* cancel = m_ui->buttons->button(QDialogButtonBox::Cancel);
    cancel->setDefault(true);
    cancel->setFocus();
}

CDeleteFolderDlg::~CDeleteFolderDlg() = default;

void CDeleteFolderDlg::accept()
{
    if (Run([this] { m_model.DeleteFolders(m_folder.repositoryName, {m_folder.path}, m_ui->message->toPlainText()); }))
        CExpandableDialog::accept();
}

} // namespace quenvolta
