#include "snapin/menu_resources.h"

#include "snapin/command_id.h"
#include "ui/string_table.h"

#include <algorithm>
#include <array>

namespace quenvolta
{

namespace
{

using namespace CommandId;

constexpr std::size_t kLongestMenuText = 128;

struct MenuItem {
    int menu;
    CCM_INSERTIONPOINTID place;
    int command;
    QStringView text;
};

constexpr std::array kMenuItems{
#define MENU_ITEM(menu, place, command, text) MenuItem{menu, CCM_INSERTIONPOINTID::place, command, u"" text},
#include "resources/menus.def"
#undef MENU_ITEM
};

static_assert(std::ranges::all_of(kMenuItems, [](const MenuItem& item) {
    return static_cast<std::size_t>(item.text.size()) <= kLongestMenuText;
}));

struct Shortcut {
    int command;
    QStringView keys;
};

constexpr std::array kShortcuts{
#define SHORTCUT(command, keys) Shortcut{command, u"" keys},
#include "resources/shortcuts.def"
#undef SHORTCUT
};

QString ShortcutOf(int command)
{
    const auto found = std::ranges::find(kShortcuts, command, &Shortcut::command);
    return found != kShortcuts.end() ? found->keys.toString() : QString();
}

bool IsAllowed(CCM_INSERTIONPOINTID place, std::uint32_t allowed)
{
    return (allowed & (1U << static_cast<unsigned>(place))) != 0;
}

} // namespace

HRESULT AddMenuResource(int menu, std::uint32_t insertionAllowed, IContextMenuCallback& callback,
                        const std::function<CommandState(int command)>& stateOf)
{
    for (const MenuItem& item : kMenuItems) {
        if (item.menu != menu || !IsAllowed(item.place, insertionAllowed))
            continue;
        const CommandState state = stateOf(item.command);
        if (state == CommandState::Hidden)
            continue;
        const HRESULT result = callback.AddItem({.strName = item.text.toString(),
                                                 .strStatusBarText = StatusTextOfCommand(item.command),
                                                 .strShortcut = ShortcutOf(item.command),
                                                 .lCommandID = item.command,
                                                 .lInsertionPointID = item.place,
                                                 .isGrayed = state == CommandState::Grayed});
        if (Failed(result))
            return result;
    }
    return S_OK;
}

QString StatusTextOfCommand(int command)
{
    return HasString(command) ? LoadString(command) : QString();
}

} // namespace quenvolta
