#include "snapin/toolbar_resources.h"

#include "snapin/command_id.h"
#include "snapin/menu_resources.h"

#include <array>

namespace quenvolta
{

namespace
{

using namespace CommandId;

struct ToolbarButton {
    int toolbar;
    int command;
    QStringView icon;
    QStringView text;
};

constexpr std::array kToolbarButtons{
#define TOOLBAR_BUTTON(toolbar, command, icon, text) ToolbarButton{toolbar, command, u"" icon, u"" text},
#include "resources/toolbars.def"
#undef TOOLBAR_BUTTON
};

} // namespace

QList<MMCBUTTON> ToolbarButtons(int toolbar)
{
    QList<MMCBUTTON> buttons;
    for (const ToolbarButton& button : kToolbarButtons) {
        if (button.toolbar == toolbar)
            buttons.append({.idCommand = button.command,
                            .icon = button.icon.toString(),
                            .buttonText = button.text.toString(),
                            .tooltipText = StatusTextOfCommand(button.command)});
    }
    return buttons;
}

} // namespace quenvolta
