#include "repositories/repository_wizard/slave_settings_page.h"

#include "accounts/windows_computer_picker_dlg.h"
#include "foundation/preferences.h"
#include "model/model.h"
#include "repositories/repository_wizard/repository_wizard_interface.h"
#include "ui_slave_settings_page.h"

namespace quenvolta::RepositoryWizard
{

namespace
{

constexpr int kTopic = 2069;

} // namespace

CSlaveSettingsPage::CSlaveSettingsPage(IcRepositoryWizard& wizard, IcPreferences& preferences)
    : CWizardPage(kTopic)
    , m_wizard(wizard)
    , m_preferences(preferences)
    , m_ui(std::make_unique<Ui::SlaveSettingsPage>())
{
    m_ui->setupUi(this);
    connect(m_ui->server, &QComboBox::editTextChanged, this, &CSlaveSettingsPage::completeChanged);
    connect(m_ui->repository, &QLineEdit::textChanged, this, &CSlaveSettingsPage::completeChanged);
    connect(m_ui->browse, &QPushButton::clicked, this, &CSlaveSettingsPage::Browse);
}

CSlaveSettingsPage::~CSlaveSettingsPage() = default;

QString CSlaveSettingsPage::MasterServer() const
{
    return m_ui->server->currentText();
}

QString CSlaveSettingsPage::MasterRepository() const
{
    return m_ui->repository->text();
}

void CSlaveSettingsPage::OnActivate()
{
    const QString typed = MasterServer();
    FillServers();
    m_ui->server->setEditText(typed);
}

bool CSlaveSettingsPage::isComplete() const
{
    return !MasterServer().isEmpty() && !MasterRepository().isEmpty();
}

bool CSlaveSettingsPage::OnNext()
{
    m_wizard.GetModel().TestQdfsConnection(MasterServer(), MasterRepository());
    m_preferences.AddRecentQdfsServer(MasterServer());
    FillServers();
    m_ui->server->setCurrentIndex(0);
    return true;
}

void CSlaveSettingsPage::Browse()
{
    Run([this] {
        CWindowsComputerPickerDlg picker(this, [this] { return m_wizard.GetModel().OpenComputerDirectory(); });
        if (picker.Show())
            m_ui->server->setEditText(picker.ComputerName());
    });
}

void CSlaveSettingsPage::FillServers()
{
    m_ui->server->clear();
    m_ui->server->addItems(m_preferences.GetRecentQdfsServers());
}

} // namespace quenvolta::RepositoryWizard
