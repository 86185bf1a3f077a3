#pragma once

#include "accounts/group_reach.h"
#include "ui/base_dialog.h"

#include <QSortFilterProxyModel>
#include <QStandardItemModel>

#include <memory>

namespace Ui
{
class ReachedUsersDlg;
}

namespace quenvolta
{

/// The users that belong to a group, and the groups through which they do.
class CReachedUsersDlg final : public CBaseDialog
{
    Q_OBJECT

public:
    CReachedUsersDlg(QWidget* parent, const QString& groupName, const QList<ReachedUser>& users);
    ~CReachedUsersDlg() override;

private:
    std::unique_ptr<Ui::ReachedUsersDlg> m_ui;
    QStandardItemModel m_users;
    QSortFilterProxyModel m_filtered;
};

} // namespace quenvolta
