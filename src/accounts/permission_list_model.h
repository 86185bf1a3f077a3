#pragma once

#include "accounts/account_icons.h"
#include "accounts/permission_item.h"

#include <QAbstractTableModel>
#include <QHash>

namespace quenvolta
{

/// The accounts of the permission editor with their levels.
class PermissionListModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    /// `computerName` is the managed computer's, for texts that tell where a level comes from.
    void SetItems(const QList<PermissionItem>& items, const QString& computerName);
    const PermissionItem& ItemAt(int row) const { return m_items[row]; }
    /// The accounts with levels of their own, in their order.
    PermissionList ExplicitEntries() const;
    /// The account's row, -1 when it has none.
    int RowOf(const Account& account) const { return m_places.value(account, -1); }

    /// Gives the rows the level; without one they fall back to what is inherited.
    void SetExplicitLevel(const QList<int>& rows, std::optional<AccessLevel> level);
    /// Appends accounts, which must not be in the list, with a level of their own.
    void Append(const QList<PermissionItem>& items);
    /// Takes the rows' own levels away; a row that inherits nothing goes.
    void RemoveExplicit(QList<int> rows);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void NumberRows();
    QString ToolTip(const PermissionItem& item) const;
    QString PlaceText(const TreePosition& place) const;

    AccountIcons m_icons;
    QList<PermissionItem> m_items;
    QHash<Account, int> m_places;
    QString m_computerName;
};

} // namespace quenvolta
