#pragma once

#include "platform/mmc/context_menu.h"

#include <QList>
#include <QObject>
#include <QPointer>

#include <array>

class QAction;
class QMenu;
class QToolBar;

namespace quenvolta
{

class ConsoleHost;

/// The snap-in's commands in the window: the items of the action menu (which is the context menu, too), and the
/// buttons of the toolbar.
class CommandBars final : public QObject
{
    Q_OBJECT

public:
    /// Items go before `end` in the menu, buttons at the end of the bar. All of them outlive this.
    CommandBars(ConsoleHost& host, QMenu& menu, QAction& end, QToolBar& bar);

    /// Asks the snap-in for the selected item's commands and their states.
    void RebuildMenu();
    void RebuildToolbar();

Q_SIGNALS:
    /// Sent later than the press, so that the command may change what it was pressed in.
    void CommandChosen(int command);
    void ButtonPressed(int command);

private:
    QMenu* AddSubmenu(int title);
    void RemoveOld(QList<QPointer<QAction>>& actions);
    void AddItem(const CONTEXTMENUITEM& item);

    ConsoleHost& m_host;
    QMenu& m_menu;
    QAction& m_end;
    QToolBar& m_bar;
    /// For the insertion points behind the top.
    std::array<QMenu*, 3> m_submenus;
    QList<QPointer<QAction>> m_items;
    QList<QPointer<QAction>> m_buttons;
};

} // namespace quenvolta
