#include "host/scope_tree_view.h"

#include <QHeaderView>
#include <QKeyEvent>

namespace quenvolta
{

ScopeTreeView::ScopeTreeView(QWidget* parent)
    : QTreeView(parent)
{
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setExpandsOnDoubleClick(true);
}

void ScopeTreeView::keyPressEvent(QKeyEvent* event)
{
    // The view would go through everything below the item, which here means the whole server.
    if (event->key() == Qt::Key_Asterisk)
        expand(currentIndex());
    else
        QTreeView::keyPressEvent(event);
}

} // namespace quenvolta
