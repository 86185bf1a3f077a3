#pragma once

#include <QCollator>
#include <QSortFilterProxyModel>

#include <vector>

namespace quenvolta
{

/// The result list as the person wants it: sorted by a column, runs of digits as numbers, and only the rows that hold a
/// text. Without either it is the snap-in's own order.
class ResultSortModel final : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit ResultSortModel(QObject* parent = nullptr);

    /// Shows only the rows that hold the text, whatever the case of letters; all for an empty one.
    void SetFilter(const QString& text);

    void sort(int column, Qt::SortOrder order) override;

protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    QCollator m_collator;
    // While a whole column is sorted: a key for each of its rows, since a row is compared many times.
    std::vector<QCollatorSortKey> m_keys;
};

} // namespace quenvolta
