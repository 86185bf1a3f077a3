#pragma once

#include "accounts/account_list_model.h"
#include "model/group_member.h"
#include "ui/base_dialog.h"

#include <QSortFilterProxyModel>

#include <memory>

namespace Ui
{
class GroupDlg;
}

namespace quenvolta
{

class CModel;

/// "Create New Group", "Edit Group".
class CGroupDlg final : public CBaseDialog
{
    Q_OBJECT

public:
    /// Creates a group.
    CGroupDlg(QWidget* parent, CModel& model);
    /// Edits the members of a group, which are read here; that may throw.
    CGroupDlg(QWidget* parent, CModel& model, const QString& groupName);
    ~CGroupDlg() override;

    void accept() override;

private:
    QString GroupName() const;
    QList<GroupMember> Members() const;
    void AddMembers();
    void RemoveMembers();
    void ShowReachedUsers();
    void UpdateButtons();
    void CreateGroup();
    void SetMembers();

    CModel& m_model;
    bool m_editing = false;
    std::unique_ptr<Ui::GroupDlg> m_ui;
    AccountListModel m_members;
    QSortFilterProxyModel m_filtered;
};

} // namespace quenvolta
