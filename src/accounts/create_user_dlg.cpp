#include "accounts/create_user_dlg.h"

#include "accounts/account_name_rule.h"
#include "accounts/password_fields.h"
#include "model/model.h"
#include "ui_create_user_dlg.h"

#include <QPushButton>
#include <QStyle>

#include <optional>

namespace quenvolta
{

CCreateUserDlg::CCreateUserDlg(QWidget* parent, CModel& model)
    : CBaseDialog(parent)
    , m_model(model)
    , m_ui(std::make_unique<Ui::CreateUserDlg>())
{
    m_ui->setupUi(this);
    constexpr int kIconSize = 16;
    m_ui->noteIcon->setPixmap(style()
                                  ->standardIcon(QStyle::SP_MessageBoxInformation, nullptr, this)
                                  .pixmap(QSize(kIconSize, kIconSize), devicePixelRatioF()));
    m_passwords = new PasswordFields(*m_ui->password, *m_ui->confirmation, *m_ui->showPassword, *m_ui->generate);
    QPushButton* ok = m_ui->buttons->button(QDialogButtonBox::Ok);
    ok->setEnabled(false);
    connect(m_ui->userName, &QLineEdit::textChanged, ok, [this, ok] { ok->setEnabled(!UserName().isEmpty()); });
}

CCreateUserDlg::~CCreateUserDlg() = default;

QString CCreateUserDlg::UserName() const
{
    return m_ui->userName->text().trimmed();
}

void CCreateUserDlg::accept()
{
    if (!IsValidAccountName(UserName()))
        Refuse(*m_ui->userName, StringId::kInvalidUserName);
    else if (!m_passwords->AreEqual())
        Refuse(*m_ui->confirmation, StringId::kPasswordNotConfirmed);
    else
        CreateUser();
}

void CCreateUserDlg::CreateUser()
{
    std::optional<UserCreation> result;
    Run([&] { result = m_model.CreateUser(UserName(), m_passwords->Password()); });
    if (result == UserCreation::AlreadyExists)
        Refuse(*m_ui->userName, StringId::kUserExists, UserName());
    else if (result == UserCreation::Created)
        CBaseDialog::accept();
}

} // namespace quenvolta
