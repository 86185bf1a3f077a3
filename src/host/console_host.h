#pragma once

#include "host/console_adapter.h"
#include "host/image_list_adapter.h"
#include "host/result_list_model.h"
#include "host/scope_tree_model.h"
#include "host/toolbar_adapter.h"
#include "platform/mmc/component_data.h"
#include "platform/mmc/context_menu.h"
#include "platform/mmc/result_view.h"

#include <QObject>

#include <functional>
#include <memory>
#include <vector>

namespace quenvolta
{

/// What a command acts on: an item of the scope tree, an inserted item of the result list, or several of them.
struct ConsoleTarget {
    HSCOPEITEM scopeItem = 0;
    HRESULTITEM resultItem = 0;
    /// Two or more when several are selected together; the other members are empty then.
    std::vector<ConsoleTarget> several = {};

    bool IsEmpty() const { return scopeItem == 0 && resultItem == 0 && several.empty(); }
    bool operator==(const ConsoleTarget&) const = default;
};

/// The console without its widgets: it drives one snap-in by notifications, and holds what its panes show.
class ConsoleHost final : public QObject
{
    Q_OBJECT

public:
    ConsoleHost();
    ~ConsoleHost() override;

    /// Gives what the result pane shows for a view type; null for the list (the empty type). To be set before Load.
    void SetResultViews(std::function<IResultView*(const QString& viewType)> views) { m_views = std::move(views); }

    /// Loads the snap-in, in place of the one before, and puts its root into the tree.
    void Load(std::unique_ptr<IComponentData> data);
    /// Null before the first.
    IComponentData* SnapIn() const { return m_data.get(); }
    /// The window over which the snap-in opens its dialogs.
    void SetMainWindow(QWidget* window) { m_mainWindow = window; }
    QWidget* MainWindow() const { return m_mainWindow; }

    ScopeTreeModel& Tree() { return m_tree; }
    ResultListModel& List() { return m_list; }
    const VerbAdapter& Verbs() const { return m_console.Verbs(); }

    /// The item whose contents the result pane shows; 0 before the first.
    HSCOPEITEM ShownItem() const { return m_shown; }
    /// The node type of the shown item, as text.
    QString ShownNodeType() const;
    IResultView* ResultView() const { return m_view; }

    /// Shows an item unless it is shown.
    void Show(HSCOPEITEM item);
    /// Shows an item also when it is shown.
    HRESULT ShowAnew(HSCOPEITEM item);
    /// Has the children inserted, once.
    void Expand(HSCOPEITEM item);
    /// What is selected in the pane that has the focus.
    void SetTarget(const ConsoleTarget& target);
    const ConsoleTarget& Target() const { return m_target; }
    /// The target of a row of the list.
    ConsoleTarget TargetAt(int row) const;

    void Open(const ConsoleTarget& target);
    void Refresh();
    void Delete(const ConsoleTarget& target);
    void Rename(HSCOPEITEM item, const QString& name);

    /// The commands that the target offers now.
    QList<CONTEXTMENUITEM> MenuItems();
    /// Runs a command of the target, if it is offered and enabled now.
    void RunCommand(int command);
    void PressButton(int command);
    const QList<const ToolbarAdapter*>& Toolbars() const { return m_controlbar.Attached(); }
    void ShowHelp();

    /// Shows the parent when what is shown is about to be removed.
    void LeaveItem(const ScopeEntry& entry, bool deleteThis);
    HRESULT UpdateView(const DataObjectPtr& object);

Q_SIGNALS:
    /// The shown item is about to change; its columns still stand.
    void AboutToLeave();
    void ShownItemChanged();
    /// The result pane shows this view type from now on.
    void ViewChanged(const QString& viewType);
    void ColumnInserted(int column, int width);
    void DescriptionChanged(const QString& text);
    void StatusTextChanged(const QString& text);
    void VerbsChanged();
    void ToolbarsChanged();

private:
    class Dispatch;

    HRESULT Notify(const ConsoleTarget& target, const MMCNotification& notification);
    DataObjectPtr DataObjectOf(const ConsoleTarget& target) const;
    QString AskScopeName(MMC_COOKIE cookie) const;
    QString AskResultText(RESULTDATAITEM item) const;
    MMC_COOKIE CookieOf(const ConsoleTarget& target) const;
    void Unload();
    void Leave();
    void Enter(ScopeEntry& entry);

    ControlbarAdapter m_controlbar{[this] { m_toolbarsChanged = true; }};
    std::unique_ptr<IComponentData> m_data;
    std::unique_ptr<IComponent> m_component;
    ImageListAdapter m_images;
    ScopeTreeModel m_tree;
    ResultListModel m_list;
    ConsoleAdapter m_console;
    std::function<IResultView*(const QString&)> m_views;
    IResultView* m_view = nullptr;
    HSCOPEITEM m_shown = 0;
    ConsoleTarget m_target;
    quint64 m_showings = 0;
    int m_dispatchDepth = 0;
    bool m_toolbarsChanged = false;
    QWidget* m_mainWindow = nullptr;
};

} // namespace quenvolta
