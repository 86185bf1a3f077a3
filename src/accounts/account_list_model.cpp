#include "accounts/account_list_model.h"

#include <algorithm>
#include <functional>
#include <vector>

namespace quenvolta
{

QList<Account> AccountListModel::Accounts() const
{
    QList<Account> accounts;
    accounts.reserve(m_rows.size());
    for (const Row& row : m_rows)
        accounts.append(row.account);
    return accounts;
}

QItemSelection AccountListModel::Add(const QList<Row>& rows)
{
    QList<Row> added;
    QList<int> places;
    for (const Row& row : rows) {
        const auto known = m_places.constFind(row.account);
        places.append(known != m_places.cend() ? *known : rowCount() + static_cast<int>(added.size()));
        if (known != m_places.cend())
            continue;
        m_places.insert(row.account, places.last());
        added.append(row);
    }
    if (!added.isEmpty()) {
        beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(added.size()) - 1);
        m_rows += added;
        endInsertRows();
    }
    std::ranges::sort(places);
    QItemSelection selection;
    for (qsizetype i = 0; i < places.size();) { // neighbours together
        const int first = places[i];
        int last = first;
        while (++i < places.size() && places[i] <= last + 1)
            last = places[i];
        selection.select(index(first), index(last));
    }
    return selection;
}

void AccountListModel::Remove(const QModelIndexList& indexes)
{
    std::vector<int> rows;
    for (const QModelIndex& each : indexes)
        rows.push_back(each.row());
    std::ranges::sort(rows, std::ranges::greater());
    for (std::size_t i = 0; i < rows.size();) { // neighbours together, from the end
        const int last = rows[i];
        int first = last;
        while (++i < rows.size() && rows[i] == first - 1)
            first = rows[i];
        beginRemoveRows({}, first, last);
        for (int row = first; row <= last; ++row)
            m_places.remove(m_rows[row].account);
        m_rows.remove(first, last - first + 1);
        endRemoveRows();
    }
    if (!rows.empty())
        NumberFrom(rows.back());
}

void AccountListModel::NumberFrom(int first)
{
    for (int row = first; row < rowCount(); ++row)
        m_places[m_rows[row].account] = row;
}

int AccountListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant AccountListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row& row = m_rows[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return row.name;
    case Qt::DecorationRole:
        return m_icons.IconOf(row.account.kind);
    default:
        return {};
    }
}

} // namespace quenvolta
