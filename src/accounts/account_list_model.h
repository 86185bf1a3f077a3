#pragma once

#include "accounts/account_icons.h"
#include "model/account.h"

#include <QAbstractListModel>
#include <QHash>
#include <QItemSelection>
#include <QList>

namespace quenvolta
{

/// A list of accounts with the names that they are shown by; each account is in it once.
class AccountListModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    struct Row {
        Account account;
        QString name;
    };

    QList<Account> Accounts() const;
    /// Appends the accounts that are not in the list yet; the places of all of them.
    QItemSelection Add(const QList<Row>& rows);
    /// Removes rows of this model.
    void Remove(const QModelIndexList& indexes);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    void NumberFrom(int first);

    AccountIcons m_icons;
    QList<Row> m_rows;
    QHash<Account, int> m_places;
};

} // namespace quenvolta
