#pragma once

#include "host/console_host.h"

#include <QObject>

class QLineEdit;
class QTreeView;

namespace quenvolta
{

class ResultSortModel;
class ViewState;

/// The list of the result pane with its filter: the rows as the person sorts and filters them, the columns as the
/// person left them.
class ResultListPane final : public QObject
{
    Q_OBJECT

public:
    /// A null `state` remembers no widths of columns. All of them outlive this.
    ResultListPane(ConsoleHost& host, QTreeView& view, QLineEdit& filter, ViewState* state);
    ~ResultListPane() override;

    /// What the selected rows stand for; empty when there are none.
    ConsoleTarget Selected() const;
    /// How many rows there are, and how many of them the filter lets through.
    QString CountText() const;

    /// Begins with another item: unsorted, unfiltered, its widths not touched yet.
    void BeginItem();
    /// Remembers the widths of the shown item's columns, if the person has changed them.
    void SaveColumns();

Q_SIGNALS:
    void CountChanged();
    void SelectionChanged();
    /// A row is to be opened.
    void Activated(const ConsoleTarget& target);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ArrangeColumn(int column, int width);
    void SelectCurrentRow();
    ConsoleTarget TargetAt(const QModelIndex& index) const;

    ConsoleHost& m_host;
    QTreeView& m_view;
    QLineEdit& m_filter;
    ViewState* m_state;
    ResultSortModel* m_rows;
    bool m_arrangingColumns = false;
    bool m_columnsTouched = false;
};

} // namespace quenvolta
