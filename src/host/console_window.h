#pragma once

#include "host/console_host.h"
#include "platform/mmc/snapin_about.h"
#include "ui/messages.h"

#include <QMainWindow>

#include <chrono>
#include <functional>
#include <memory>

class QAbstractItemView;
class QLabel;

namespace Ui
{
class ConsoleWindow;
}

namespace quenvolta
{

class CommandBars;
class FileCommands;
class ResultListPane;
class ResultViews;
class SnapInCatalog;
class ViewState;

/// The console's window: the scope tree, the result pane, menus and bars.
class ConsoleWindow final : public QMainWindow
{
    Q_OBJECT

public:
    using SnapInFactory = std::function<std::unique_ptr<IComponentData>()>;

    /// Failures and questions go to `messages`. A null `state` remembers nothing. All of them outlive the window.
    ConsoleWindow(const ISnapinAbout& about, IcMessages& messages, ViewState* state);
    ~ConsoleWindow() override;

    /// Loads the snap-in and shows its root.
    void Load(std::unique_ptr<IComponentData> snapIn);
    /// Loads the snap-in once the window has been painted, so that a slow server doesn't keep the screen empty.
    void LoadWhenPainted(SnapInFactory factory);

    /// The same for a console file.
    void OpenWhenPainted(const QString& fileName);

    /// Lets the window open and save console files, and change the preferences; the catalog outlives the window.
    void SetCatalog(const SnapInCatalog& catalog);
    /// Opens a console file, or the new console where the file can't be opened.
    void OpenFile(const QString& fileName);

    /// Waits until the result pane shows what it should. False when the time is over first.
    bool WaitUntilDrawn(std::chrono::milliseconds limit);
    /// Opens the shown item in the tree.
    void ExpandShownItem();

    ConsoleHost& Host() { return m_host; }

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void ConnectActions();
    void ConnectPanes();
    void ConnectCommands();
    void ConnectFileActions();
    void ConnectHost();
    template <typename Body>
    void Run(Body&& body);

    void ShowView(const QString& viewType);
    void ShowItem();
    void ShowNames();
    void ShowStatusText(const QString& text);
    void ShowCount();
    void ShowVerbs();
    void ShowAbout();
    void ShowPreferences();
    void TakeTarget();
    ConsoleTarget SelectedTarget() const;
    void GoUp();
    void GoToNextPane();
    void EditName();
    void PopUpActions(QAbstractItemView& view, const QPoint& position);
    void AdjustToFont();

    const ISnapinAbout& m_about;
    IcMessages& m_messages;
    ViewState* m_state;
    std::unique_ptr<Ui::ConsoleWindow> m_ui;
    QLabel* m_count;
    ResultViews* m_views;
    std::unique_ptr<ResultListPane> m_list;
    /// What is done once the window has been painted.
    std::function<void()> m_whenPainted;
    const SnapInCatalog* m_catalog = nullptr;
    std::unique_ptr<FileCommands> m_files;
    CommandBars* m_commands = nullptr;
    ConsoleHost m_host; // goes first: it no longer speaks to the widgets then
};

} // namespace quenvolta
