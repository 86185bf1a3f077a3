#pragma once

#include <QList>
#include <QSettings>
#include <QString>

class QMainWindow;
class QSplitter;

namespace quenvolta
{

/// How the person left the window: its place and size, the panes, the widths of columns by node type.
class ViewState
{
public:
    /// In the person's own settings, or in the file.
    ViewState();
    explicit ViewState(const QString& fileName);

    void Restore(QMainWindow& window, QSplitter& panes) const;
    void Save(const QMainWindow& window, const QSplitter& panes);
    /// Empty when the person left the columns as they were.
    QList<int> ColumnWidths(const QString& nodeType) const;
    void SaveColumnWidths(const QString& nodeType, const QList<int>& widths);

    /// The console files opened and saved, the most recent first; those that are gone are left out.
    QStringList RecentFiles() const;
    void AddRecentFile(const QString& fileName);

private:
    QSettings m_settings;
};

} // namespace quenvolta
