#include "repositories/repository_wizard/adjust_replication_settings.h"

#include "accounts/user_group_picker_dlg.h"
#include "accounts/windows_account_names.h"
#include "model/model.h"
#include "repositories/repository_wizard/repository_wizard_interface.h"
#include "ui_adjust_replication_settings.h"

namespace quenvolta::RepositoryWizard
{

namespace
{

constexpr int kTopic = 2055;

} // namespace

CAdjustReplicationSettings::CAdjustReplicationSettings(IcRepositoryWizard& wizard)
    : CWizardPage(kTopic)
    , m_wizard(wizard)
    , m_ui(std::make_unique<Ui::AdjustReplicationSettings>())
{
    m_ui->setupUi(this);
    LinkToHelp(*m_ui->learnMore, kTopic);
    m_ui->replicators->setModel(&m_accounts);
    connect(m_ui->add, &QPushButton::clicked, this, [this] { Run([this] { Add(); }); });
    connect(m_ui->remove, &QPushButton::clicked, this, &CAdjustReplicationSettings::Remove);
    connect(m_ui->replicators->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CAdjustReplicationSettings::UpdateButtons);
    UpdateButtons();
}

CAdjustReplicationSettings::~CAdjustReplicationSettings() = default;

QStringList CAdjustReplicationSettings::Replicators() const
{
    QStringList sids;
    for (const Account& account : m_accounts.Accounts())
        sids.append(account.name);
    return sids;
}

bool CAdjustReplicationSettings::OnNext()
{
    m_wizard.CreateRepository();
    return true;
}

void CAdjustReplicationSettings::Add()
{
    CModel& model = m_wizard.GetModel();
    CUserGroupPickerDlg picker(
        this, [&model] { return model.OpenComputerDirectory(); }, CUserGroupPickerDlg::Computers::With);
    if (!picker.Show())
        return;
    const QStringList sids = picker.Sids();
    const QStringList names = WindowsAccountNames(model, sids);
    QList<AccountListModel::Row> rows;
    for (qsizetype i = 0; i < sids.size(); ++i)
        rows.append({{AccountKind::WindowsAccount, sids[i]}, names[i]});
    m_ui->replicators->selectionModel()->select(m_accounts.Add(rows), QItemSelectionModel::ClearAndSelect);
}

void CAdjustReplicationSettings::Remove()
{
    m_accounts.Remove(m_ui->replicators->selectionModel()->selectedIndexes());
    UpdateButtons();
}

void CAdjustReplicationSettings::UpdateButtons()
{
    m_ui->remove->setEnabled(m_ui->replicators->selectionModel()->hasSelection());
}

} // namespace quenvolta::RepositoryWizard
