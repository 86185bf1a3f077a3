#include "host/result_sort_model.h"

#include "platform/natural_collator.h"

namespace quenvolta
{

ResultSortModel::ResultSortModel(QObject* parent)
    : QSortFilterProxyModel(parent)
    , m_collator(NaturalCollator())
{
    setFilterCaseSensitivity(Qt::CaseInsensitive);
    setFilterKeyColumn(-1);
}

void ResultSortModel::SetFilter(const QString& text)
{
    setFilterFixedString(text);
}

void ResultSortModel::sort(int column, Qt::SortOrder order)
{
    if (column >= 0 && sourceModel() != nullptr) {
        const int count = sourceModel()->rowCount();
        m_keys.reserve(static_cast<std::size_t>(count));
        for (int row = 0; row < count; ++row)
            m_keys.push_back(m_collator.sortKey(sourceModel()->index(row, column).data().toString()));
    }
    QSortFilterProxyModel::sort(column, order);
    m_keys.clear();
}

bool ResultSortModel::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    if (!m_keys.empty())
        return m_keys[static_cast<std::size_t>(left.row())].compare(m_keys[static_cast<std::size_t>(right.row())]) < 0;
    return m_collator.compare(left.data().toString(), right.data().toString()) < 0;
}

} // namespace quenvolta
