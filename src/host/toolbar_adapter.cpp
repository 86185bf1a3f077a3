#include "host/toolbar_adapter.h"

#include <algorithm>

namespace quenvolta
{

HRESULT ToolbarAdapter::AddButton(const MMCBUTTON& button)
{
    m_buttons.append({button});
    m_changed();
    return S_OK;
}

HRESULT ToolbarAdapter::SetButtonState(int command, MMC_BUTTON_STATE buttonState, bool state)
{
    const auto found = std::ranges::find_if(
        m_buttons, [command](const ToolbarButtonState& each) { return each.button.idCommand == command; });
    if (found == m_buttons.end())
        return E_INVALIDARG;
    bool& now = buttonState == MMC_BUTTON_STATE::ENABLED ? found->isEnabled : found->isHidden;
    if (now == state)
        return S_OK;
    now = state;
    m_changed();
    return S_OK;
}

HRESULT ControlbarAdapter::Create(const QString& /*title*/, IToolbar** toolbar)
{
    m_toolbars.push_back(std::make_unique<ToolbarAdapter>(m_changed));
    *toolbar = m_toolbars.back().get();
    return S_OK;
}

HRESULT ControlbarAdapter::Attach(IToolbar& toolbar)
{
    const auto* adapter = dynamic_cast<const ToolbarAdapter*>(&toolbar);
    if (adapter == nullptr || m_attached.contains(adapter))
        return E_INVALIDARG;
    m_attached.append(adapter);
    m_changed();
    return S_OK;
}

HRESULT ControlbarAdapter::Detach(IToolbar& toolbar)
{
    if (m_attached.removeAll(dynamic_cast<const ToolbarAdapter*>(&toolbar)) == 0)
        return E_INVALIDARG;
    m_changed();
    return S_OK;
}

void ControlbarAdapter::Clear()
{
    m_attached.clear();
    m_toolbars.clear();
    m_changed();
}

} // namespace quenvolta
