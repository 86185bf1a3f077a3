#pragma once

#include "platform/mmc/component_data.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class QAction;
class QMenu;
class QWidget;

namespace quenvolta
{

class ConsoleHost;
class IcMessages;
class SnapInCatalog;
class ViewState;

/// The commands of the window for console files.
class FileCommands final : public QObject
{
    Q_OBJECT

public:
    using Loader = std::function<void(std::unique_ptr<IComponentData> snapIn)>;

    /// `state` remembers the recent files; it may be null. `load` puts a snap-in into the window. All outlive this.
    FileCommands(const SnapInCatalog& catalog, ConsoleHost& host, IcMessages& messages, ViewState* state,
                 QWidget& window, Loader load);

    // Failures are exceptions, and leave the console as it was.
    void New();
    void Open();
    void OpenFile(const QString& fileName);
    /// False when the person thought better of it.
    bool Save();
    bool SaveAs();
    /// Asks about changes that aren't saved. False when the console is to stay.
    bool MayLeave();
    /// Fills the menu of recent files.
    void FillRecentFiles(QMenu& menu);

    /// Empty for a console that isn't in a file.
    const QString& FileName() const { return m_fileName; }

Q_SIGNALS:
    void FileNameChanged();
    void RecentFileChosen(const QString& fileName);

private:
    void SetFileName(const QString& fileName);
    void Write(const QString& fileName);

    const SnapInCatalog& m_catalog;
    ConsoleHost& m_host;
    IcMessages& m_messages;
    ViewState* m_state;
    QWidget& m_window;
    Loader m_load;
    QString m_fileName;
};

} // namespace quenvolta
