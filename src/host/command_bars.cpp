#include "host/command_bars.h"

#include "host/console_host.h"
#include "ui/icons.h"
#include "ui/string_table.h"

#include <QAction>
#include <QMenu>
#include <QToolBar>

namespace quenvolta
{

CommandBars::CommandBars(ConsoleHost& host, QMenu& menu, QAction& end, QToolBar& bar)
    : m_host(host)
    , m_menu(menu)
    , m_end(end)
    , m_bar(bar)
    , m_submenus{AddSubmenu(StringId::kMenuNew), AddSubmenu(StringId::kMenuTasks), AddSubmenu(StringId::kMenuView)}
{
    connect(&menu, &QMenu::aboutToShow, this, &CommandBars::RebuildMenu);
}

QMenu* CommandBars::AddSubmenu(int title)
{
    auto* submenu = new QMenu(LoadString(title), &m_menu);
    m_menu.insertMenu(&m_end, submenu);
    return submenu;
}

void CommandBars::RemoveOld(QList<QPointer<QAction>>& actions)
{
    for (const QPointer<QAction>& action : std::exchange(actions, {})) {
        if (!action)
            continue;
        m_menu.removeAction(action);
        m_bar.removeAction(action);
        for (QMenu* submenu : m_submenus)
            submenu->removeAction(action);
        action->deleteLater(); // it may be the one that is being triggered
    }
}

void CommandBars::RebuildMenu()
{
    RemoveOld(m_items);
    for (const CONTEXTMENUITEM& item : m_host.MenuItems())
        AddItem(item);
    for (QMenu* submenu : m_submenus)
        submenu->menuAction()->setVisible(!submenu->isEmpty());
    if (!m_items.isEmpty())
        m_items.append(m_menu.insertSeparator(&m_end));
}

void CommandBars::AddItem(const CONTEXTMENUITEM& item)
{
    auto* action = new QAction(item.strName, this);
    action->setEnabled(!item.isGrayed);
    action->setStatusTip(item.strStatusBarText);
    action->setData(item.lCommandID);
    connect(
        action, &QAction::triggered, this, [this, command = item.lCommandID] { Q_EMIT CommandChosen(command); },
        Qt::QueuedConnection);
    m_items.append(action);
    if (item.lInsertionPointID == CCM_INSERTIONPOINTID::TOP) {
        action->setShortcut(QKeySequence(item.strShortcut)); // once: the same command stands in other places, too
        m_menu.insertAction(m_submenus.front()->menuAction(), action);
    } else {
        m_submenus[static_cast<std::size_t>(item.lInsertionPointID) - 1]->addAction(action);
    }
}

void CommandBars::RebuildToolbar()
{
    RemoveOld(m_buttons);
    for (const ToolbarAdapter* toolbar : m_host.Toolbars()) {
        m_buttons.append(m_bar.addSeparator());
        for (const ToolbarButtonState& state : toolbar->Buttons()) {
            if (state.isHidden)
                continue;
            auto* action = new QAction(IconNamed(state.button.icon), state.button.buttonText, this);
            action->setEnabled(state.isEnabled);
            action->setStatusTip(state.button.tooltipText);
            connect(
                action, &QAction::triggered, this,
                [this, command = state.button.idCommand] { Q_EMIT ButtonPressed(command); }, Qt::QueuedConnection);
            m_bar.addAction(action);
            m_buttons.append(action);
        }
    }
}

} // namespace quenvolta
