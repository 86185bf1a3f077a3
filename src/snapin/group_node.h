#pragma once

#include "snapin/base_node_item.h"

namespace quenvolta
{

/// A Subversion group, listed in the result pane.
class CGroupNode final : public CBaseNodeItem<CGroupNode>
{
public:
    static constexpr NodeType kNodeType{{0xCECDFE13, 0xA897, 0x40F0, 0x90, 0x93, 0x84, 0x76, 0x18, 0x8D, 0x4A, 0x54},
                                        StringId::kGroupName};

    CGroupNode(const NodeServices& services, QString name);

    static std::span<const CommandHandler<CGroupNode>> Commands();
    int DeleteSeveralQuestion() const override { return StringId::kAskDeleteGroups; }
    void DeleteUnasked() override;

protected:
    int GetMenuId() override { return MenuId::kGroup; }
    QString DisplayName() const override { return m_name; }
    void SetVerbs(IConsoleVerb& verb) override { Enable(verb, MMC_CONSOLE_VERB::MMC_VERB_DELETE); }
    /// Edits the group; left to the console where that isn't possible.
    HRESULT OnDblClick(IConsole& console) override;
    HRESULT OnDelete(IConsole& console) override;

private:
    void Edit(IConsole& console);

    QString m_name;
};

} // namespace quenvolta
