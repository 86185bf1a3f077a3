#pragma once

#include "snapin/base_node_item.h"

namespace quenvolta
{

/// A Subversion user, listed in the result pane.
class CUserNode final : public CBaseNodeItem<CUserNode>
{
public:
    static constexpr NodeType kNodeType{{0x79F51B3E, 0x0172, 0x4D9D, 0xA8, 0x78, 0xD9, 0x2C, 0x6F, 0x95, 0xC4, 0xCF},
                                        StringId::kUserName};

    CUserNode(const NodeServices& services, QString name);

    static std::span<const CommandHandler<CUserNode>> Commands();
    int DeleteSeveralQuestion() const override { return StringId::kAskDeleteUsers; }
    void DeleteUnasked() override;

protected:
    int GetMenuId() override { return MenuId::kUser; }
    QString DisplayName() const override { return m_name; }
    void SetVerbs(IConsoleVerb& verb) override { Enable(verb, MMC_CONSOLE_VERB::MMC_VERB_DELETE); }
    /// Left to the console.
    HRESULT OnDblClick(IConsole& /*console*/) override { return S_FALSE; }
    HRESULT OnDelete(IConsole& console) override;

private:
    void SetPassword(IConsole& console);

    QString m_name;
};

} // namespace quenvolta
