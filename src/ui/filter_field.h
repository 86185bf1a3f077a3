#pragma once

#include <QObject>

class QAbstractItemView;
class QLineEdit;
class QSortFilterProxyModel;

namespace quenvolta
{

/// Lets a field filter a list by what its texts contain, without regard to case. The arrow down leads into the list.
class FilterField final : public QObject
{
    Q_OBJECT

public:
    /// Belongs to the field. The list shows the proxy.
    FilterField(QLineEdit& field, QSortFilterProxyModel& proxy, QAbstractItemView& list);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QAbstractItemView& m_list;
};

} // namespace quenvolta
