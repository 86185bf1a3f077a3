#include "accounts/set_password_dlg.h"

#include "accounts/password_fields.h"
#include "model/model.h"
#include "ui_set_password_dlg.h"

namespace quenvolta
{

CSetPasswordDlg::CSetPasswordDlg(QWidget* parent, CModel& model, const QString& userName)
    : CBaseDialog(parent)
    , m_model(model)
    , m_userName(userName)
    , m_ui(std::make_unique<Ui::SetPasswordDlg>())
{
    m_ui->setupUi(this);
    setWindowTitle(FormatMessage(windowTitle(), {m_userName}));
    m_passwords = new PasswordFields(*m_ui->password, *m_ui->confirmation, *m_ui->showPassword, *m_ui->generate);
}

CSetPasswordDlg::~CSetPasswordDlg() = default;

void CSetPasswordDlg::accept()
{
    if (!m_passwords->AreEqual())
        Refuse(*m_ui->confirmation, StringId::kPasswordNotConfirmed);
    else if (Run([this] { m_model.SetPassword(m_userName, m_passwords->Password()); }))
        CBaseDialog::accept();
}

} // namespace quenvolta
