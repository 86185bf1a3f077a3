#pragma once

#include "platform/mmc/controlbar.h"

#include <QList>

#include <functional>
#include <memory>
#include <vector>

namespace quenvolta
{

/// A button of a toolbar with its state.
struct ToolbarButtonState {
    MMCBUTTON button;
    bool isEnabled = true;
    bool isHidden = false;
};

/// A toolbar as the snap-in sees it.
class ToolbarAdapter final : public IToolbar
{
public:
    explicit ToolbarAdapter(std::function<void()> changed)
        : m_changed(std::move(changed))
    {
    }

    HRESULT AddButton(const MMCBUTTON& button) override;
    HRESULT SetButtonState(int command, MMC_BUTTON_STATE buttonState, bool state) override;

    const QList<ToolbarButtonState>& Buttons() const { return m_buttons; }

private:
    std::function<void()> m_changed;
    QList<ToolbarButtonState> m_buttons;
};

/// The control bar as the snap-in sees it.
class ControlbarAdapter final : public IControlbar
{
public:
    /// `changed` is called when toolbars or states of buttons change.
    explicit ControlbarAdapter(std::function<void()> changed)
        : m_changed(std::move(changed))
    {
    }

    HRESULT Create(const QString& title, IToolbar** toolbar) override;
    HRESULT Attach(IToolbar& toolbar) override;
    HRESULT Detach(IToolbar& toolbar) override;

    /// The toolbars of the selected item, in their order.
    const QList<const ToolbarAdapter*>& Attached() const { return m_attached; }
    /// All toolbars go.
    void Clear();

private:
    std::function<void()> m_changed;
    std::vector<std::unique_ptr<ToolbarAdapter>> m_toolbars;
    QList<const ToolbarAdapter*> m_attached;
};

} // namespace quenvolta
