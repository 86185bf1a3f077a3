#include "repositories/create_folder_dlg_impl.h"

#include "repositories/commit_details.h"
#include "repositories/create_folder_executor.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>

#include <utility>

namespace quenvolta
{

CCreateFolderDlgImpl::CCreateFolderDlgImpl(QWidget* parent, std::unique_ptr<IcCreateFolderExecutor> executor)
    : CExpandableDialog(parent)
    , m_executor(std::move(executor))
{
}

CCreateFolderDlgImpl::~CCreateFolderDlgImpl() = default;

void CCreateFolderDlgImpl::SetUp(const Parts& parts)
{
    m_name = &parts.name;
    m_message = &parts.message;
    SetDetails(parts.details, AddDetailsButton(parts.buttons, parts.hooksNote));
    QPushButton* ok = parts.buttons.button(QDialogButtonBox::Ok);
    ok->setEnabled(false);
    connect(m_name, &QLineEdit::textChanged, ok, [ok](const QString& name) { ok->setEnabled(!name.isEmpty()); });
    connect(m_name, &QLineEdit::textChanged, this, &CCreateFolderDlgImpl::ProposeMessage);
    connect(m_message, &QPlainTextEdit::textChanged, this, [this] { m_messageEdited = true; });
}

void CCreateFolderDlgImpl::accept()
{
    bool done = false;
    if (Run([&] { done = m_executor->Execute(m_name->text(), m_message->toPlainText(), this); }) && !done)
        FocusOn(*m_name);
    if (done)
        CExpandableDialog::accept();
}

void CCreateFolderDlgImpl::ProposeMessage()
{
    if (m_messageEdited)
        return;
    const QSignalBlocker proposal(m_message); // which is no editing
    m_message->setPlainText(m_name->text().isEmpty() ? QString() : m_executor->GetDefaultMessage(m_name->text()));
}

} // namespace quenvolta
