#include "accounts/group_dlg.h"

#include "accounts/account_name_rule.h"
#include "accounts/choose_member_dlg.h"
#include "accounts/group_reach.h"
#include "accounts/reached_users_dlg.h"
#include "model/model.h"
#include "ui/filter_field.h"
#include "ui_group_dlg.h"

#include <QPushButton>

#include <optional>

namespace quenvolta
{

namespace
{

Account ToAccount(const GroupMember& member)
{
    return {member.kind == GroupMemberKind::Group ? AccountKind::Group : AccountKind::User, member.name};
}

GroupMember ToMember(const Account& account)
{
    return {account.kind == AccountKind::Group ? GroupMemberKind::Group : GroupMemberKind::User, account.name};
}

} // namespace

CGroupDlg::CGroupDlg(QWidget* parent, CModel& model)
    : CBaseDialog(parent)
    , m_model(model)
    , m_ui(std::make_unique<Ui::GroupDlg>())
{
    m_ui->setupUi(this);
    setWindowTitle(LoadString(StringId::kCreateNewGroup));
    m_filtered.setSourceModel(&m_members);
    m_ui->members->setModel(&m_filtered);
    new FilterField(*m_ui->filter, m_filtered, *m_ui->members);
    connect(m_ui->groupName, &QLineEdit::textChanged, this, &CGroupDlg::UpdateButtons);
    connect(m_ui->members->selectionModel(), &QItemSelectionModel::selectionChanged, this, &CGroupDlg::UpdateButtons);
    connect(m_ui->add, &QPushButton::clicked, this, [this] { Run([this] { AddMembers(); }); });
    connect(m_ui->remove, &QPushButton::clicked, this, &CGroupDlg::RemoveMembers);
    connect(m_ui->reached, &QPushButton::clicked, this, [this] { Run([this] { ShowReachedUsers(); }); });
    UpdateButtons();
}

CGroupDlg::CGroupDlg(QWidget* parent, CModel& model, const QString& groupName)
    : CGroupDlg(parent, model)
{
    m_editing = true;
    setWindowTitle(LoadString(StringId::kEditGroup));
    m_ui->groupName->setText(groupName);
    m_ui->groupName->setReadOnly(true);
    m_ui->members->setFocus();
    QList<AccountListModel::Row> rows;
    for (const GroupMember& member : m_model.GetGroupMembers(groupName))
        rows.append({ToAccount(member), member.name});
    m_members.Add(rows);
    UpdateButtons();
}

CGroupDlg::~CGroupDlg() = default;

QString CGroupDlg::GroupName() const
{
    return m_ui->groupName->text().trimmed();
}

QList<GroupMember> CGroupDlg::Members() const
{
    QList<GroupMember> members;
    for (const Account& account : m_members.Accounts())
        members.append(ToMember(account));
    return members;
}

void CGroupDlg::AddMembers()
{
    CChooseMemberDlg chooser(this, m_model);
    if (chooser.exec() != Accepted)
        return;
    m_ui->filter->clear(); // what is added shall be seen
    QList<AccountListModel::Row> rows;
    for (const Account& account : chooser.ChosenAccounts())
        rows.append({account, account.name});
    const QItemSelection chosen = m_filtered.mapSelectionFromSource(m_members.Add(rows));
    m_ui->members->selectionModel()->select(chosen, QItemSelectionModel::ClearAndSelect);
    m_ui->members->selectionModel()->setCurrentIndex(chosen.indexes().last(), QItemSelectionModel::NoUpdate);
    m_ui->members->scrollTo(m_ui->members->currentIndex());
    UpdateButtons();
}

void CGroupDlg::RemoveMembers()
{
    QModelIndexList rows;
    for (const QModelIndex& row : m_ui->members->selectionModel()->selection().indexes())
        rows.append(m_filtered.mapToSource(row));
    m_members.Remove(rows);
    UpdateButtons();
}

void CGroupDlg::ShowReachedUsers()
{
    const QList<ReachedUser> users =
        FindReachedUsers(Members(), [this](const QString& group) { return m_model.GetGroupMembers(group); });
    CReachedUsersDlg(this, GroupName(), users).exec();
}

void CGroupDlg::UpdateButtons()
{
    m_ui->buttons->button(QDialogButtonBox::Ok)->setEnabled(!GroupName().isEmpty());
    m_ui->remove->setEnabled(m_ui->members->selectionModel()->hasSelection());
    m_ui->reached->setEnabled(m_members.rowCount() > 0);
}

void CGroupDlg::accept()
{
    // A group that is edited has its name from the server, which may have got it in another way.
    if (m_editing)
        SetMembers();
    else if (!IsValidAccountName(GroupName()))
        Refuse(*m_ui->groupName, StringId::kInvalidGroupName);
    else
        CreateGroup();
}

void CGroupDlg::CreateGroup()
{
    std::optional<GroupCreation> result;
    Run([&] { result = m_model.CreateGroup(GroupName(), Members()); });
    if (result == GroupCreation::AlreadyExists)
        Refuse(*m_ui->groupName, StringId::kGroupExists, GroupName());
    else if (result == GroupCreation::MembersHaveCycles)
        Refuse(*m_ui->members, StringId::kGroupMembersHaveCycles);
    else if (result == GroupCreation::Created)
        CBaseDialog::accept();
}

void CGroupDlg::SetMembers()
{
    std::optional<MembershipChange> result;
    Run([&] { result = m_model.SetGroupMembers(GroupName(), Members()); });
    if (result == MembershipChange::NoSuchGroup)
        Refuse(*m_ui->groupName, StringId::kGroupDoesNotExist, GroupName());
    else if (result == MembershipChange::MembersHaveCycles)
        Refuse(*m_ui->members, StringId::kGroupMembersHaveCycles);
    else if (result == MembershipChange::Done)
        CBaseDialog::accept();
}

} // namespace quenvolta
