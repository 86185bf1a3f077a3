#include "accounts/choose_accounts_dlg.h"

#include "accounts/create_user_dlg.h"
#include "model/model.h"
#include "ui/filter_field.h"
#include "ui_choose_accounts_dlg.h"

#include <QPushButton>

#include <algorithm>

namespace quenvolta
{

namespace
{

constexpr int kKindRole = Qt::UserRole;
constexpr int kNameRole = Qt::UserRole + 1;

} // namespace

CChooseAccountsDlg::CChooseAccountsDlg(QWidget* parent, CModel& model, int columnTitle, bool hasCreateUser)
    : CBaseDialog(parent)
    , m_model(model)
    , m_ui(std::make_unique<Ui::ChooseAccountsDlg>())
{
    m_ui->setupUi(this);
    m_ui->createUser->setVisible(hasCreateUser);
    m_accounts.setHorizontalHeaderLabels({LoadString(columnTitle)});
    m_filtered.setSourceModel(&m_accounts);
    m_filtered.setRecursiveFilteringEnabled(true);
    m_ui->list->setModel(&m_filtered);
    new FilterField(*m_ui->filter, m_filtered, *m_ui->list);
    connect(m_ui->filter, &QLineEdit::textChanged, m_ui->list, &QTreeView::expandAll);
    connect(m_ui->createUser, &QPushButton::clicked, this, &CChooseAccountsDlg::CreateUser);
    connect(m_ui->list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CChooseAccountsDlg::UpdateOkButton);
    connect(m_ui->list, &QTreeView::doubleClicked, m_ui->buttons->button(QDialogButtonBox::Ok), &QPushButton::click);
    UpdateOkButton();
}

CChooseAccountsDlg::~CChooseAccountsDlg() = default;

QList<Account> CChooseAccountsDlg::ChosenAccounts() const
{
    QModelIndexList rows = m_ui->list->selectionModel()->selection().indexes();
    std::ranges::sort(rows, {}, [](const QModelIndex& row) { return std::pair(row.parent().row(), row.row()); });
    QList<Account> chosen;
    for (const QModelIndex& row : rows)
        chosen.append(AccountOf(row));
    return chosen;
}

void CChooseAccountsDlg::AddSection(int title, AccountKind kind, QStringList names)
{
    names.sort(Qt::CaseInsensitive);
    auto* section = new QStandardItem(LoadString(title));
    section->setFlags(Qt::ItemIsEnabled);
    QFont font = m_ui->list->font();
    font.setBold(true);
    section->setFont(font);
    QList<QStandardItem*> items;
    items.reserve(names.size());
    for (const QString& name : names) {
        auto* item = new QStandardItem(m_icons.IconOf(kind), name);
        item->setData(static_cast<int>(kind), kKindRole);
        item->setData(kind == AccountKind::Everyone ? QString() : name, kNameRole);
        items.append(item);
    }
    section->appendRows(items);
    m_accounts.appendRow(section);
}

void CChooseAccountsDlg::Load()
{
    m_accounts.removeRows(0, m_accounts.rowCount());
    AddSections();
    m_ui->list->expandAll();
    UpdateOkButton();
}

void CChooseAccountsDlg::CreateUser()
{
    CCreateUserDlg dialog(this, m_model);
    if (dialog.exec() != Accepted)
        return;
    Run([&] {
        m_ui->filter->clear();
        Load();
        Select({AccountKind::User, dialog.UserName()});
    });
}

void CChooseAccountsDlg::UpdateOkButton()
{
    m_ui->buttons->button(QDialogButtonBox::Ok)->setEnabled(m_ui->list->selectionModel()->hasSelection());
}

void CChooseAccountsDlg::Select(const Account& account)
{
    for (int section = 0; section < m_filtered.rowCount(); ++section) {
        const QModelIndex heading = m_filtered.index(section, 0);
        for (int row = 0; row < m_filtered.rowCount(heading); ++row) {
            const QModelIndex index = m_filtered.index(row, 0, heading);
            if (AccountOf(index) == account)
                m_ui->list->setCurrentIndex(index); // which scrolls to it
        }
    }
    m_ui->list->setFocus();
}

Account CChooseAccountsDlg::AccountOf(const QModelIndex& index)
{
    return {static_cast<AccountKind>(index.data(kKindRole).toInt()), index.data(kNameRole).toString()};
}

} // namespace quenvolta
