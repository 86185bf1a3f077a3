#include "snapin/select_computer_dlg.h"

#include "foundation/preferences.h"
#include "model/model.h"
#include "ui/computer_browser_dlg.h"
#include "ui/guard.h"
#include "ui/shell.h"
#include "ui_select_computer_dlg.h"

#include <QLineEdit>
#include <QPushButton>

namespace quenvolta
{

CSelectComputerDlg::CSelectComputerDlg(CModel& model, const IcPreferences& preferences, const IcShell& shell,
                                       IcMessages& messages, QWidget* parent)
    : QDialog(parent)
    , m_model(model)
    , m_messages(messages)
    , m_ui(std::make_unique<Ui::SelectComputerDlg>())
{
    m_ui->setupUi(this);
    m_ui->anotherComputer->setChecked(true);
    m_ui->computer->addItems(preferences.GetRecentServers());
    m_ui->computer->setCurrentIndex(m_ui->computer->count() > 0 ? 0 : -1);
    connect(m_ui->localComputer, &QRadioButton::toggled, this, &CSelectComputerDlg::UpdateControls);
    connect(m_ui->computer, &QComboBox::editTextChanged, this, &CSelectComputerDlg::UpdateControls);
    connect(m_ui->browse, &QPushButton::clicked, this, &CSelectComputerDlg::Browse);
    connect(m_ui->buttons, &QDialogButtonBox::accepted, this, &CSelectComputerDlg::accept);
    connect(m_ui->credentials, &QLabel::linkActivated, this,
            [this, &shell] { Guarded(m_messages, [&] { shell.OpenStoredCredentials(); }); });
    UpdateControls();
    m_ui->computer->setFocus();
    m_ui->computer->lineEdit()->selectAll();
}

CSelectComputerDlg::~CSelectComputerDlg() = default;

QString CSelectComputerDlg::ComputerName() const
{
    return m_ui->localComputer->isChecked() ? QString() : m_ui->computer->currentText().trimmed();
}

void CSelectComputerDlg::UpdateControls()
{
    const bool isLocal = m_ui->localComputer->isChecked();
    m_ui->computer->setEnabled(!isLocal);
    m_ui->browse->setEnabled(!isLocal);
    m_ui->buttons->button(QDialogButtonBox::Ok)->setEnabled(isLocal || !ComputerName().isEmpty());
}

void CSelectComputerDlg::Browse()
{
    CComputerBrowserDlg browser(this);
    if (browser.exec() == QDialog::Accepted && !browser.Computer().isEmpty())
        m_ui->computer->setEditText(browser.Computer());
    UpdateControls();
}

void CSelectComputerDlg::accept()
{
    // Who can't be reached is for the root to show: the model keeps the name, and connects when it is asked for
    // something.
    Guarded(m_messages, [this] { m_model.SetComputer(ComputerName(), true); });
    QDialog::accept();
}

} // namespace quenvolta
