#include "accounts/security_page.h"

#include "accounts/access_level_text.h"
#include "accounts/add_permission_dlg.h"
#include "accounts/security_page_host.h"
#include "accounts/user_group_picker_dlg.h"
#include "ui/filter_field.h"
#include "ui/guard.h"
#include "ui/wait_cursor.h"
#include "ui_security_page.h"

#include <QButtonGroup>

#include <algorithm>
#include <utility>

namespace quenvolta
{

namespace
{

constexpr int kAccessControlTopic = 2024;
constexpr int kSlavePermissionsTopic = 2054;

// The options' numbers: an access level, or these.
constexpr int kInheritOption = 100;
constexpr int kNoOption = -1;

/// What the selected rows have in common.
struct CommonLevels {
    bool allInherited = true;
    bool noneExplicit = true;
    std::optional<AccessLevel> sameExplicit = {};
    std::optional<AccessLevel> sameInherited = {};
};

CommonLevels FindCommonLevels(const PermissionListModel& items, const QList<int>& rows)
{
    const PermissionItem& first = items.ItemAt(rows.first());
    CommonLevels common;
    common.sameExplicit = first.explicitLevel;
    if (first.inherited)
        common.sameInherited = first.inherited->level;
    for (const int row : rows) {
        const PermissionItem& item = items.ItemAt(row);
        common.allInherited = common.allInherited && item.inherited;
        common.noneExplicit = common.noneExplicit && !item.explicitLevel;
        if (item.explicitLevel != common.sameExplicit)
            common.sameExplicit.reset();
        if (!item.inherited || item.inherited->level != common.sameInherited)
            common.sameInherited.reset();
    }
    return common;
}

} // namespace

CSecurityPage::CSecurityPage(IcSecurityPageHost& host, Mode mode)
    : m_host(host)
    , m_mode(mode)
    , m_ui(std::make_unique<Ui::SecurityPage>())
    , m_options(new QButtonGroup(this))
{
    m_ui->setupUi(this);
    m_messages.SetParent(this);
    m_filtered.setSourceModel(&m_items);
    m_ui->list->setModel(&m_filtered);
    constexpr int kNameWidth = 220;
    m_ui->list->setColumnWidth(0, kNameWidth);
    new FilterField(*m_ui->filter, m_filtered, *m_ui->list);
    m_filtered.setFilterKeyColumn(0); // a row shall not go because its level is changed
    m_options->addButton(m_ui->noAccess, static_cast<int>(AccessLevel::NoAccess));
    m_options->addButton(m_ui->readOnly, static_cast<int>(AccessLevel::ReadOnly));
    m_options->addButton(m_ui->readWrite, static_cast<int>(AccessLevel::ReadWrite));
    m_options->addButton(m_ui->inherit, kInheritOption);
    const bool editable = m_mode == Mode::Editable;
    m_ui->add->setVisible(editable);
    m_ui->remove->setVisible(editable);
    m_ui->replicated->setVisible(!editable);
    LinkToHelp(*m_ui->learnMore, kAccessControlTopic);
    LinkToHelp(*m_ui->replicated, kSlavePermissionsTopic);
    connect(m_ui->list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &CSecurityPage::UpdateOptions);
    connect(m_ui->add, &QPushButton::clicked, this, [this] { Guarded(m_messages, [this] { Add(); }); });
    connect(m_ui->remove, &QPushButton::clicked, this, [this] { Guarded(m_messages, [this] { Remove(); }); });
    connect(m_options, &QButtonGroup::idClicked, this, &CSecurityPage::ChooseLevel);
    UpdateOptions();
}

CSecurityPage::CSecurityPage(std::unique_ptr<IcSecurityPageHost> host, Mode mode)
    : CSecurityPage(*host, mode)
{
    m_ownedHost = std::move(host);
}

CSecurityPage::~CSecurityPage() = default;

void CSecurityPage::OnCreatePage()
{
    Load();
    Select({});
    m_ui->list->setFocus();
}

void CSecurityPage::OnApply()
{
    QList<Account> selected;
    for (const int row : SelectedRows())
        selected.append(m_items.ItemAt(row).account);
    m_host.SetPermissions(m_items.ExplicitEntries());
    Load();
    Select(selected);
}

void CSecurityPage::Load()
{
    // Everything is read before anything is shown: a list that was read in part must never be applied.
    const QList<PermissionItem> items = LoadPermissionItems(m_host);
    m_items.SetItems(items, m_host.GetServerComputerName());
    SetModified(false);
    UpdateOptions();
}

QList<Account> CSecurityPage::ChooseAccounts()
{
    QList<Account> accounts;
    if (!m_host.IsWindowsAuthentication()) {
        const auto chooser = m_host.CreateAccountChooser(this);
        return chooser->exec() == QDialog::Accepted ? chooser->ChosenAccounts() : accounts;
    }
    const auto picker = m_host.CreateWindowsPicker(this);
    if (picker->Show()) {
        for (const QString& sid : picker->Sids())
            accounts.append({AccountKind::WindowsAccount, sid});
    }
    return accounts;
}

void CSecurityPage::Add()
{
    const QList<Account> chosen = ChooseAccounts();
    if (chosen.isEmpty())
        return;
    QList<Account> added;
    std::ranges::copy_if(chosen, std::back_inserter(added),
                         [this](const Account& each) { return m_items.RowOf(each) < 0; });
    const QStringList names = AccountNames(m_host, added);
    QList<PermissionItem> items;
    for (qsizetype i = 0; i < added.size(); ++i)
        items.append({.account = added[i], .name = names[i], .explicitLevel = AccessLevel::ReadWrite});
    m_ui->filter->clear(); // what is added shall be seen
    m_items.Append(items);
    if (!items.isEmpty())
        SetModified();
    Select(chosen);
}

void CSecurityPage::Remove()
{
    const QList<int> rows = SelectedRows();
    const bool anyExplicit =
        std::ranges::any_of(rows, [this](int row) { return m_items.ItemAt(row).explicitLevel.has_value(); });
    constexpr MessageStyle kWarning{MessageIcon::Warning, MessageButtons::Ok};
    if (!anyExplicit && rows.size() == 1)
        m_messages.ShowMessage(kWarning, StringId::kCannotRemoveInherited, m_items.ItemAt(rows.first()).name);
    else if (!anyExplicit)
        m_messages.ShowMessage(kWarning, StringId::kCannotRemoveSelectedInherited);
    if (!anyExplicit)
        return;
    m_items.RemoveExplicit(rows);
    SetModified();
    UpdateOptions();
}

void CSecurityPage::ChooseLevel(int option)
{
    m_items.SetExplicitLevel(SelectedRows(),
                             option == kInheritOption ? std::nullopt : std::optional(static_cast<AccessLevel>(option)));
    SetModified();
    UpdateOptions();
}

void CSecurityPage::UpdateOptions()
{
    const QList<int> rows = SelectedRows();
    const bool enabled = m_mode == Mode::Editable && !rows.isEmpty();
    const CommonLevels common = rows.isEmpty() ? CommonLevels() : FindCommonLevels(m_items, rows);
    for (QAbstractButton* button : {m_ui->noAccess, m_ui->readOnly, m_ui->readWrite})
        button->setEnabled(enabled);
    m_ui->remove->setEnabled(enabled);
    m_ui->inherit->setEnabled(enabled && common.allInherited);
    m_ui->inherit->setText(common.sameInherited
                               ? LoadString(StringId::kInheritLevelFromParent, AccessLevelText(*common.sameInherited))
                               : LoadString(StringId::kInheritFromParent));
    if (rows.isEmpty())
        CheckOption(kNoOption);
    else if (common.sameExplicit)
        CheckOption(static_cast<int>(*common.sameExplicit));
    else
        CheckOption(common.noneExplicit ? kInheritOption : kNoOption);
}

void CSecurityPage::CheckOption(int option)
{
    m_options->setExclusive(false); // else one of them would stay checked
    for (QAbstractButton* button : m_options->buttons())
        button->setChecked(m_options->id(button) == option);
    m_options->setExclusive(true);
}

QList<int> CSecurityPage::SelectedRows() const
{
    QList<int> rows;
    for (const QModelIndex& index : m_ui->list->selectionModel()->selection().indexes()) {
        if (index.column() == 0)
            rows.append(m_filtered.mapToSource(index).row());
    }
    std::ranges::sort(rows);
    return rows;
}

void CSecurityPage::Select(const QList<Account>& accounts)
{
    QItemSelection selection;
    QModelIndex last;
    for (const Account& account : accounts) {
        const QModelIndex row = m_filtered.mapFromSource(m_items.index(m_items.RowOf(account), 0));
        if (!row.isValid())
            continue;
        selection.select(row, row.siblingAtColumn(1));
        last = row;
    }
    if (selection.isEmpty() && m_filtered.rowCount() > 0) {
        last = m_filtered.index(0, 0);
        selection.select(last, last.siblingAtColumn(1));
    }
    m_ui->list->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    m_ui->list->selectionModel()->setCurrentIndex(last, QItemSelectionModel::NoUpdate);
    m_ui->list->scrollTo(last);
    m_ui->list->setFocus();
    UpdateOptions();
}

} // namespace quenvolta
