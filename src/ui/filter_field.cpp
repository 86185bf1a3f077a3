#include "ui/filter_field.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSortFilterProxyModel>

namespace quenvolta
{

FilterField::FilterField(QLineEdit& field, QSortFilterProxyModel& proxy, QAbstractItemView& list)
    : QObject(&field)
    , m_list(list)
{
    proxy.setFilterCaseSensitivity(Qt::CaseInsensitive);
    proxy.setFilterKeyColumn(-1);
    field.installEventFilter(this);
    connect(&field, &QLineEdit::textChanged, &proxy, &QSortFilterProxyModel::setFilterFixedString);
}

namespace
{

QModelIndex FirstSelectable(const QAbstractItemModel& model, const QModelIndex& parent = {})
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        const QModelIndex found = index.flags().testFlag(Qt::ItemIsSelectable) ? index : FirstSelectable(model, index);
        if (found.isValid())
            return found;
    }
    return {};
}

} // namespace

bool FilterField::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Down)
        return QObject::eventFilter(watched, event);
    m_list.setFocus(Qt::ShortcutFocusReason);
    if (!m_list.selectionModel()->hasSelection())
        m_list.setCurrentIndex(FirstSelectable(*m_list.model()));
    return true;
}

} // namespace quenvolta
