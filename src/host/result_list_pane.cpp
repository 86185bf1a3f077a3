#include "host/result_list_pane.h"

#include "host/result_sort_model.h"
#include "host/row_delegate.h"
#include "host/view_state.h"
#include "ui/string_table.h"

#include <QFontInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QTreeView>

#include <algorithm>

namespace quenvolta
{

namespace
{

// The pixels of a font of ordinary size on a screen of 96 dots an inch.
constexpr double kOrdinaryFontSize = 13.0;

} // namespace

ResultListPane::ResultListPane(ConsoleHost& host, QTreeView& view, QLineEdit& filter, ViewState* state)
    : m_host(host)
    , m_view(view)
    , m_filter(filter)
    , m_state(state)
    , m_rows(new ResultSortModel(this))
{
    m_rows->setSourceModel(&m_host.List());
    m_view.setItemDelegate(new RowDelegate(&m_view));
    m_view.setModel(m_rows);
    m_view.header()->setSortIndicatorClearable(true); // the third press brings the snap-in's order back
    m_view.header()->setSortIndicator(-1, Qt::AscendingOrder);
    m_view.setSortingEnabled(true);
    m_view.installEventFilter(this);
    m_filter.installEventFilter(this);

    connect(&m_filter, &QLineEdit::textChanged, m_rows, &ResultSortModel::SetFilter);
    connect(&m_host, &ConsoleHost::AboutToLeave, this, &ResultListPane::SaveColumns);
    connect(&m_host, &ConsoleHost::ColumnInserted, this, &ResultListPane::ArrangeColumn);
    connect(m_rows, &QAbstractItemModel::rowsInserted, this, &ResultListPane::CountChanged);
    connect(m_rows, &QAbstractItemModel::rowsRemoved, this, &ResultListPane::CountChanged);
    connect(m_rows, &QAbstractItemModel::modelReset, this, &ResultListPane::CountChanged);
    connect(m_view.selectionModel(), &QItemSelectionModel::selectionChanged, this, &ResultListPane::SelectionChanged);
    connect(&m_view, &QTreeView::activated, this,
            [this](const QModelIndex& opened) { Q_EMIT Activated(TargetAt(opened)); });
    connect(m_view.header(), &QHeaderView::sectionResized, this, [this](int section) {
        if (!m_arrangingColumns && section < m_host.List().columnCount() - 1)
            m_columnsTouched = true;
    });
}

ResultListPane::~ResultListPane()
{
    m_view.setModel(nullptr); // the rows go with this
}

ConsoleTarget ResultListPane::TargetAt(const QModelIndex& index) const
{
    return m_host.TargetAt(m_rows->mapToSource(index).row());
}

ConsoleTarget ResultListPane::Selected() const
{
    std::vector<ConsoleTarget> targets;
    for (const QModelIndex& row : m_view.selectionModel()->selectedRows())
        targets.push_back(TargetAt(row));
    return targets.size() == 1 ? targets.front() : ConsoleTarget{.several = std::move(targets)};
}

QString ResultListPane::CountText() const
{
    const int all = m_host.List().rowCount();
    const int shown = m_rows->rowCount();
    return shown == all ? LoadString(StringId::kCountOfItems, all)
                        : LoadString(StringId::kCountOfFilteredItems, shown, all);
}

void ResultListPane::BeginItem()
{
    m_columnsTouched = false;
    m_filter.clear();
    m_view.sortByColumn(-1, Qt::AscendingOrder);
}

void ResultListPane::ArrangeColumn(int column, int width)
{
    const QScopedValueRollback arranging(m_arrangingColumns, true);
    const QList<int> kept = m_state != nullptr ? m_state->ColumnWidths(m_host.ShownNodeType()) : QList<int>();
    const double scale = std::max(1.0, QFontInfo(m_view.font()).pixelSize() / kOrdinaryFontSize);
    m_view.header()->resizeSection(column, column < kept.size() ? kept[column] : qRound(width * scale));
}

void ResultListPane::SaveColumns()
{
    if (m_state == nullptr || !m_columnsTouched)
        return;
    QList<int> widths; // the last column takes what is left
    for (int column = 0; column < m_host.List().columnCount() - 1; ++column)
        widths.append(m_view.columnWidth(column));
    m_state->SaveColumnWidths(m_host.ShownNodeType(), widths);
}

void ResultListPane::SelectCurrentRow()
{
    QItemSelectionModel* selection = m_view.selectionModel();
    if (!m_view.hasFocus() || selection->hasSelection() || m_rows->rowCount() == 0)
        return;
    const QModelIndex current = selection->currentIndex();
    selection->setCurrentIndex(current.isValid() ? current : m_rows->index(0, 0),
                               QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

bool ResultListPane::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &m_view && event->type() == QEvent::FocusIn) {
        // By the keyboard something is selected at once; the mouse says by itself what.
        const Qt::FocusReason reason = static_cast<const QFocusEvent*>(event)->reason();
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::OtherFocusReason)
            QMetaObject::invokeMethod(this, &ResultListPane::SelectCurrentRow, Qt::QueuedConnection);
    }
    if (watched == &m_filter && event->type() == QEvent::KeyPress) {
        switch (static_cast<const QKeyEvent*>(event)->key()) {
        case Qt::Key_Escape:
            m_filter.clear();
            [[fallthrough]];
        case Qt::Key_Down:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            m_view.setFocus(Qt::OtherFocusReason);
            return true;
        default:
            break;
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace quenvolta
